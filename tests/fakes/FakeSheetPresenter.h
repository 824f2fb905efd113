#pragma once

#include "platform/sheets/Sheets.h"
#include "tests/fakes/Journal.h"

#include <QWidget>

#include <vector>

/// Keeps a list of the open sheets. endSheet() calls the end handler, as QtSheetPresenter does.
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
    /// Parent window of the sheet; null when the sheet is not open.
    [[nodiscard]] QWidget *windowOf(const platform::Sheet *sheet) const;
    /// Presses the button of the first alert. Returns whether the end handler hid the alert and cleared the
    /// focus inside it.
    bool dismissAlert();
    std::vector<ShownAlert> alerts;
    /// Titles of all alerts so far.
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
