#pragma once

class KS7AnimatingStatusTableView;
class KS7PreviewController;
class LinkLabel;
class NoticeStrip;
class PaneWords;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QSlider;
class QToolButton;
class QWidget;

namespace platform {
class LevelIndicator;
class ProgressIndicator;
class Sheet;
class SpinnerIndicator;
}

/// Pointers to the controls of the interface files. Do not remove the members that no code reads: interface
/// files may connect them and would no longer load.
struct Outlets {
    QMenu *statusMenu = nullptr; // unread
    QSlider *audioBitrateSlider = nullptr; // unread
    QSlider *videoBitrateSlider = nullptr; // unread
    QLineEdit *field1 = nullptr; // unread
    QLineEdit *field2 = nullptr; // unread
    QCheckBox *statusMenuCheckbox = nullptr;
    QCheckBox *debugLog = nullptr;
    QCheckBox *enableKS7Checkbox = nullptr;
    platform::SpinnerIndicator *searchingIndicator = nullptr;
    QToolButton *pulldownMenu = nullptr;
    KS7AnimatingStatusTableView *cameraListTable = nullptr;
    QWidget *cameraStatusWindow = nullptr; // unread
    QLabel *discoveringMessage = nullptr;
    QLineEdit *cameraIDText = nullptr;
    QLineEdit *cameraNameText = nullptr;
    QCheckBox *ignoreCheckbox = nullptr;
    platform::ProgressIndicator *firmwareCheckingIndicator = nullptr;
    QLabel *firmwareStatusText = nullptr;
    QLabel *firmwareMainText = nullptr;
    QPushButton *addButton = nullptr;
    QPushButton *removeButton = nullptr;
    platform::Sheet *propertiesSheet = nullptr;
    platform::Sheet *pinSheet = nullptr;
    platform::Sheet *firmwareSheet = nullptr;
    QLineEdit *newPINText = nullptr;
    QPushButton *pinOkayButton = nullptr;
    QPushButton *firmwareCancelButton = nullptr;
    QPushButton *firmwareContinueButton = nullptr;
    KS7PreviewController *previewView = nullptr;
    QPushButton *startButton = nullptr;
    platform::LevelIndicator *levelIndicator_r = nullptr;
    platform::LevelIndicator *levelIndicator_l = nullptr;
    LinkLabel *copyright = nullptr;
    QComboBox *optimizeForPopUp = nullptr;
    QLabel *optimizeForPopUpLabel = nullptr;
    QLabel *pinCamera = nullptr;
    QLabel *pinRule = nullptr;
    QLabel *firmwareCamera = nullptr;
    NoticeStrip *noticeStrip = nullptr;
    QLabel *listHint = nullptr;
    QLabel *pictureCaption = nullptr;
    PaneWords *words = nullptr;
};

/// Tags of the two menu items that need a camera on the USB cable.
enum PulldownMenuTag { ChangePasskeyTag = 34, UpdateFirmwareTag = 35 };
