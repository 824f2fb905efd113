#include "cameras/CameraTitle.h"
#include "cameras/KS7Cam.h"
#include "pane/KS7SettingsWindowController.h"

#include "pane/KSPreferencesPanePref.h"
#include "platform/sheets/Sheets.h"
#include "widgets/Announcement.h"

#include <QLabel>

void KS7SettingsWindowController::beginSheet(platform::Sheet *sheet)
{
    mServices.sheets->beginSheet(sheet, KSPreferencesPanePref::shared()->mainWindow(),
                                 [this](QWidget *ended, int returnCode, void *contextInfo) {
                                     sheetDidEnd(ended, returnCode, contextInfo);
                                 });
}

void KS7SettingsWindowController::nameSelectedCam(platform::Sheet *sheet, QLabel *label)
{
    const auto camera = selectedCam();
    label->setText(camera ? cameraTitle(*camera) : QString());
    // A screen reader says the description of a dialog that opens, but may leave out labels of one or two
    // words.
    describe(sheet, label->text());
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
