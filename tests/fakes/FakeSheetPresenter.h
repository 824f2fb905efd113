#pragma once

#include "platform/sheets/Sheets.h"
#include "tests/fakes/Journal.h"

#include <QWidget>

#include <vector>

/// Shows sheets and keeps a list of the open ones. endSheet() calls the end handler, as QtSheetPresenter
/// does.
class FakeSheetPresenter final : public platform::SheetPresenter {
public:
    explicit FakeSheetPresenter(Journal journal)
        : mJournal(std::move(journal))
    {
    }
    QWidget *applicationMainWindow() override { return &mMainWindow; }
    void beginAlertSheet(const platform::AlertSheet &alert, QWidget *window,
                         platform::SheetDidEnd didEnd) override;
    void beginSheet(platform::Sheet *sheet, QWidget *modalForWindow, platform::SheetDidEnd didEnd) override;
    void endSheet(platform::Sheet *sheet) override;

    struct ShownAlert {
        platform::AlertSheet alert;
        QWidget *window;
        platform::SheetDidEnd didEnd;
    };
    [[nodiscard]] bool isUp(const platform::Sheet *sheet) const;
    /// The parent window of an open sheet. Null if the sheet is not open.
    [[nodiscard]] QWidget *windowOf(const platform::Sheet *sheet) const;
    /// Calls the end handler of the oldest alert, as a press of its button does, with a box made here.
    /// Returns whether the handler did what sheetDidEnd() must do: move the focus from the button to the box,
    /// and hide the box.
    bool dismissAlert();
    std::vector<ShownAlert> alerts;
    /// The titles of all alerts shown so far.
    QStringList alertTitles;

private:
    struct Shown {
        platform::Sheet *sheet;
        QWidget *window;
        platform::SheetDidEnd didEnd;
    };
    [[nodiscard]] std::vector<Shown>::const_iterator find(const platform::Sheet *sheet) const;
    Journal mJournal;
    std::vector<Shown> mSheets;
    QWidget mMainWindow;
};
