#include "tests/fakes/FakeSheetPresenter.h"

#include <QPushButton>

#include <algorithm>

void FakeSheetPresenter::beginAlertSheet(const platform::AlertSheet &alert, QWidget *window,
                                         platform::SheetDidEnd didEnd)
{
    note(mJournal, QStringLiteral("alert ") + alert.title);
    alertTitles.append(alert.title);
    alerts.push_back({alert, window, std::move(didEnd)});
}

void FakeSheetPresenter::beginSheet(platform::Sheet *sheet, QWidget *modalForWindow,
                                    platform::SheetDidEnd didEnd)
{
    note(mJournal, QStringLiteral("begin ") + sheet->objectName());
    mSheets.push_back({sheet, modalForWindow, std::move(didEnd)});
    sheet->show();
}

void FakeSheetPresenter::endSheet(platform::Sheet *sheet)
{
    const auto shown = find(sheet);
    if (shown == mSheets.end())
        return;
    note(mJournal, QStringLiteral("end ") + sheet->objectName());
    const auto didEnd = shown->didEnd;
    mSheets.erase(shown);
    didEnd(sheet, 0, nullptr);
}

std::vector<FakeSheetPresenter::Shown>::const_iterator
FakeSheetPresenter::find(const platform::Sheet *sheet) const
{
    return std::find_if(mSheets.begin(), mSheets.end(),
                        [sheet](const Shown &shown) { return shown.sheet == sheet; });
}

bool FakeSheetPresenter::isUp(const platform::Sheet *sheet) const
{
    return find(sheet) != mSheets.end();
}

QWidget *FakeSheetPresenter::windowOf(const platform::Sheet *sheet) const
{
    return isUp(sheet) ? find(sheet)->window : nullptr;
}

bool FakeSheetPresenter::dismissAlert()
{
    const auto shown = alerts.front();
    alerts.erase(alerts.begin());
    QWidget box;
    QPushButton button(&box);
    box.show();
    button.setFocus();
    shown.didEnd(&box, 0, nullptr);
    return box.isHidden() && box.focusWidget() == &box;
}
