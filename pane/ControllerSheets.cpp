#include "pane/KS7SettingsWindowController.h"

#include "pane/KSPreferencesPanePref.h"
#include "platform/sheets/Sheets.h"

void KS7SettingsWindowController::beginSheet(platform::Sheet *sheet)
{
    mServices.sheets->beginSheet(sheet, KSPreferencesPanePref::shared()->mainWindow(),
                                 [this](QWidget *ended, int returnCode, void *contextInfo) {
                                     sheetDidEnd(ended, returnCode, contextInfo);
                                 });
}

void KS7SettingsWindowController::beginAlert(const platform::AlertSheet &alert)
{
    mServices.sheets->beginAlertSheet(alert, KSPreferencesPanePref::shared()->mainWindow(),
                                      [this](QWidget *ended, int returnCode, void *contextInfo) {
                                          sheetDidEnd(ended, returnCode, contextInfo);
                                      });
}

void KS7SettingsWindowController::sheetDidEnd(QWidget *sheet, int, void *)
{
    // Before the sheet is hidden, take the focus away from its text field. Without the focus, the field hides
    // its cursor and closes its input method.
    sheet->setFocus(Qt::OtherFocusReason);
    sheet->hide();
}
