#include "pane/PaneNib.h"

#include "about/KS7AboutBoxWindow.h"
#include "about/UpdateStrip.h"
#include "agent/AgentProxyFactory.h"
#include "cameras/ChooseCameraMenu.h"
#include "cameras/KS7AnimatingStatusTableView.h"
#include "pane/Diagnosis.h"
#include "pane/KS7SettingsWindowController.h"
#include "pane/PaneTranslator.h"
#include "pane/PaneWords.h"
#include "platform/desktop/Bundle.h"
#include "platform/desktop/Workspace.h"
#include "platform/sheets/Sheets.h"
#include "preview/KS7PreviewController.h"
#include "preview/KS7QTCaptureView.h"
#include "ui_firmware.h"
#include "ui_pane.h"
#include "ui_passkey.h"
#include "ui_properties.h"
#include "widgets/Announcement.h"
#include "widgets/Indicators.h"
#include "widgets/NoticeStrip.h"

#include <QDialogButtonBox>
#include <QEvent>
#include <QIcon>
#include <QLayout>
#include <QMenu>
#include <QTranslator>

#include <algorithm>
#include <initializer_list>

using Controller = KS7SettingsWindowController;

namespace {

/// Gives a control the focus when its sheet is shown and each time the control becomes enabled. A line edit's
/// text is selected when the sheet is shown.
class FirstResponder final : public QObject {
public:
    FirstResponder(QWidget *widget, QWidget *sheet)
        : QObject(widget)
        , mWidget(widget)
        , mSheet(sheet)
    {
        sheet->installEventFilter(this);
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool comesUp = watched == mSheet && event->type() == QEvent::Show;
        const bool isBack =
            watched == mWidget && event->type() == QEvent::EnabledChange && mWidget->isEnabled();
        if (comesUp || isBack)
            mWidget->setFocus(Qt::OtherFocusReason);
        if (auto *field = comesUp ? qobject_cast<QLineEdit *>(mWidget) : nullptr)
            field->selectAll();
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget *mWidget;
    QWidget *mSheet;
};

void keepPlaceWhenHidden(QWidget *widget)
{
    auto policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

/// Keeps the space of a hidden button in its QDialogButtonBox. Since Qt 6.6 the box removes a button that
/// receives a HideToParent event, so no such event must reach the button.
class RoomKeeper final : public QObject {
public:
    explicit RoomKeeper(QWidget *button)
        : QObject(button)
    {
        keepPlaceWhenHidden(button);
        button->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const bool isForBox = event->type() == QEvent::HideToParent || event->type() == QEvent::ShowToParent;
        return isForBox || QObject::eventFilter(watched, event);
    }
};

/// Names and labels a button of a QDialogButtonBox. Tests find it by the object name; the pane's own text
/// replaces Qt's.
void dress(QPushButton *button, const char *name, const QString &text)
{
    button->setObjectName(QLatin1String(name));
    button->setText(text);
}

/// Replaces the strip's message until the next refresh of the pane.
void sayNoBluetoothSettings(NoticeStrip *strip)
{
    const QString text = KS7SettingsWindowController::tr(
        "No program for Bluetooth settings was found. Turn Bluetooth on in your desktop's settings.");
    const bool isRead = isDescriptionRead(strip->button()) && strip->message() != text;
    strip->setMessage(text);
    if (!isRead)
        announce(strip, text);
}

/// Makes a sheet wide enough for its longest text. Otherwise the sheet would change its size whenever a text
/// changes.
void setWidthInCharacters(platform::Sheet *sheet, int characters)
{
    sheet->setWantedWidth(sheet->fontMetrics().averageCharWidth() * characters);
}

constexpr int FirmwareSheetWidth = 80;

/// Creates a sheet from its interface file. `view` becomes its parent and deletes it.
template <class InterfaceFile>
platform::Sheet *makeSheet(InterfaceFile *file, QWidget *view)
{
    auto *sheet = new platform::Sheet(view);
    file->setupUi(sheet);
    return sheet;
}

/// Sets width and height of a button to `side`. Without a fixed size, a style may give a button with text
/// more width than height.
void makeSquare(QAbstractButton *button, int side)
{
    button->setFixedSize(side, side);
}

} // namespace

PaneNib::PaneNib(const platform::Services &services, std::shared_ptr<AgentProxyFactory> protocols)
    : mServices(services)
    , mProtocols(std::move(protocols))
    , mTranslator(makePaneTranslator(*services.bundle))
    , mPreviewController(std::make_unique<KS7PreviewController>(services.capture, services.runLoop))
    , mController(std::make_unique<Controller>(services, mProtocols))
{
    mController->init();
    loadMainView();
    loadSheets();
    fillPulldownMenu();
    connectListActions();
    connectSettingsActions();
    connectMaintenanceActions();
}

PaneNib::~PaneNib()
{
    // The parent widget deletes the view. Without a parent, delete it here.
    if (mMainView && !mMainView->parent())
        delete mMainView;
}

void PaneNib::loadMainView()
{
    mMainView = new QWidget;
    // Create the update strip before all other widgets, so that it is the first in the Tab order. It is also
    // the topmost widget on the screen.
    auto *updateStrip = new UpdateStrip(mServices.updates->offer(), mMainView);
    Ui::PaneView ui;
    ui.setupUi(mMainView);
    mMainView->layout()->setMenuBar(updateStrip);
    auto &outlets = mController->outlets;
    outlets.statusMenuCheckbox = ui.statusMenuCheckbox;
    outlets.debugLog = ui.debugLog;
    outlets.enableKS7Checkbox = ui.enableKS7Checkbox;
    outlets.searchingIndicator = ui.searchingIndicator;
    outlets.pulldownMenu = ui.pulldownMenu;
    outlets.cameraListTable = ui.cameraListTable;
    outlets.discoveringMessage = ui.discoveringMessage;
    outlets.addButton = ui.addButton;
    outlets.removeButton = ui.removeButton;
    outlets.startButton = ui.startButton;
    outlets.levelIndicator_l = ui.levelIndicator_l;
    outlets.levelIndicator_r = ui.levelIndicator_r;
    ui.levelIndicator_l->setLabel(ui.levelLabel_l);
    ui.levelIndicator_r->setLabel(ui.levelLabel_r);
    outlets.copyright = ui.copyright;
    outlets.optimizeForPopUp = ui.optimizeForPopUp;
    outlets.optimizeForPopUpLabel = ui.optimizeForPopUpLabel;
    dressListButtons();
    outlets.previewView = mPreviewController.get();
    mPreviewController->qtView = ui.qtView;
    ui.cameraListTable->settingsController = mController.get();
    outlets.noticeStrip = ui.noticeStrip;
    outlets.listHint = ui.listHint;
    outlets.pictureCaption = ui.pictureCaption;
    mWords = std::make_unique<PaneWords>(outlets);
    outlets.words = mWords.get();
    connectNoticeStrip();
}

void PaneNib::connectNoticeStrip()
{
    NoticeStrip *strip = mController->outlets.noticeStrip;
    strip->button()->setText(KS7SettingsWindowController::tr("&Bluetooth Settings…"));
    QObject::connect(strip->button(), &QPushButton::clicked, mController.get(),
                     [strip, workspace = mServices.workspace] {
                         if (!workspace->openBluetoothSettings())
                             sayNoBluetoothSettings(strip);
                     });
}

void PaneNib::dressListButtons()
{
    const auto &outlets = mController->outlets;
    // If the theme has neither "configure" nor "preferences-system", the button shows its text instead.
    outlets.pulldownMenu->setIcon(QIcon::fromTheme(QStringLiteral("configure"),
                                                   QIcon::fromTheme(QStringLiteral("preferences-system"))));
    // Reserve space for the hidden message, so that showing the message neither moves controls nor resizes
    // the window.
    keepPlaceWhenHidden(outlets.discoveringMessage);
    const int side =
        std::max(outlets.addButton->sizeHint().height(), outlets.pulldownMenu->sizeHint().height());
    makeSquare(outlets.addButton, side);
    makeSquare(outlets.removeButton, side);
    makeSquare(outlets.pulldownMenu, side);
}

void PaneNib::loadSheets()
{
    loadPropertiesSheet();
    loadPasskeySheet();
    loadFirmwareSheet();
}

void PaneNib::loadPropertiesSheet()
{
    auto &outlets = mController->outlets;
    Ui::PropertiesSheet properties;
    outlets.propertiesSheet = makeSheet(&properties, mMainView);
    outlets.cameraNameText = properties.cameraNameText;
    outlets.cameraIDText = properties.cameraIDText;
    outlets.ignoreCheckbox = properties.ignoreCheckbox;
    dress(properties.propertiesButtons->button(QDialogButtonBox::Ok), "propertiesOkayButton",
          KS7SettingsWindowController::tr("OK"));
    dress(properties.propertiesButtons->button(QDialogButtonBox::Cancel), "propertiesCancelButton",
          KS7SettingsWindowController::tr("Cancel"));
    new FirstResponder(outlets.cameraNameText, outlets.propertiesSheet);
}

void PaneNib::loadPasskeySheet()
{
    auto &outlets = mController->outlets;
    Ui::PasskeySheet passkey;
    outlets.pinSheet = makeSheet(&passkey, mMainView);
    outlets.newPINText = passkey.newPINText;
    outlets.pinCamera = passkey.pinCamera;
    outlets.pinRule = passkey.pinRule;
    outlets.pinOkayButton = passkey.pinButtons->button(QDialogButtonBox::Ok);
    dress(outlets.pinOkayButton, "pinOkayButton", KS7SettingsWindowController::tr("OK"));
    dress(passkey.pinButtons->button(QDialogButtonBox::Cancel), "pinCancelButton",
          KS7SettingsWindowController::tr("Cancel"));
    new FirstResponder(outlets.newPINText, outlets.pinSheet);
}

void PaneNib::loadFirmwareSheet()
{
    auto &outlets = mController->outlets;
    Ui::FirmwareSheet firmware;
    outlets.firmwareSheet = makeSheet(&firmware, mMainView);
    outlets.firmwareCheckingIndicator = firmware.firmwareCheckingIndicator;
    outlets.firmwareStatusText = firmware.firmwareStatusText;
    outlets.firmwareMainText = firmware.firmwareMainText;
    outlets.firmwareCamera = firmware.firmwareCamera;
    outlets.firmwareContinueButton =
        firmware.firmwareButtons->addButton(QString(), QDialogButtonBox::AcceptRole);
    outlets.firmwareCancelButton = firmware.firmwareButtons->addButton(QDialogButtonBox::Cancel);
    dress(outlets.firmwareContinueButton, "firmwareContinueButton",
          KS7SettingsWindowController::tr("Continue"));
    dress(outlets.firmwareCancelButton, "firmwareCancelButton", KS7SettingsWindowController::tr("Cancel"));
    outlets.firmwareContinueButton->setDefault(true);
    keepPlaceWhenHidden(outlets.firmwareCheckingIndicator);
    new RoomKeeper(outlets.firmwareCancelButton);
    setWidthInCharacters(outlets.firmwareSheet, FirmwareSheetWidth);
    new FirstResponder(outlets.firmwareContinueButton, outlets.firmwareSheet);
}

namespace {

/// Connects a control's signal to an action of the controller. The action receives the control as its sender.
template <class Control, class Signal>
void connectAction(Control *control, Signal signal, Controller *controller,
                   void (Controller::*action)(QObject *))
{
    QObject::connect(control, signal, controller,
                     [controller, action, control] { (controller->*action)(control); });
}

/// A button, and the action of the controller that a click on this button calls.
struct Click {
    QAbstractButton *button;
    void (Controller::*action)(QObject *);
};

void connectClicks(Controller *controller, std::initializer_list<Click> clicks)
{
    for (const auto &click : clicks)
        connectAction(click.button, &QAbstractButton::clicked, controller, click.action);
}

/// Uses toggled() and not clicked(), because assistive technology changes a check box without a click. When
/// the pane sets the state itself, it must block the box's signals, or `action` would run.
void connectSwitch(Controller *controller, QCheckBox *box, void (Controller::*action)(QObject *))
{
    connectAction(box, &QCheckBox::toggled, controller, action);
}

/// Finds a button of a sheet by its object name, for buttons without an outlet.
QAbstractButton *buttonIn(const QWidget *sheet, const char *name)
{
    return sheet->findChild<QAbstractButton *>(QLatin1String(name));
}

} // namespace

void PaneNib::fillPulldownMenu()
{
    auto *controller = mController.get();
    auto *menu = new QMenu(controller->outlets.pulldownMenu);
    const auto add = [&](const QString &title, void (Controller::*action)(QObject *), int tag = 0) {
        QAction *item = menu->addAction(title);
        item->setData(tag);
        connectAction(item, &QAction::triggered, controller, action);
        return item;
    };
    add(KS7SettingsWindowController::tr("Use This Camera"), &Controller::setActiveCamera);
    menu->addMenu(new ChooseCameraMenu(controller->outlets.cameraListTable, menu));
    add(KS7SettingsWindowController::tr("Properties…"), &Controller::showCameraProperties);
    add(KS7SettingsWindowController::tr("Change Passkey…"), &Controller::changePIN, ChangePasskeyTag);
    add(KS7SettingsWindowController::tr("Update Firmware…"), &Controller::installFirmware, UpdateFirmwareTag)
        ->setToolTip(KS7SettingsWindowController::tr(
            "Available while the selected camera is connected by USB and has new firmware"));
    menu->setToolTipsVisible(true);
    menu->addSeparator();
    QObject::connect(menu->addAction(KS7SettingsWindowController::tr("About KS-7…")), &QAction::triggered,
                     controller, [this] { showAboutBox(); });
    // Assistive technology triggers a menu item without a click, which does not close the menu. Close it
    // here.
    QObject::connect(menu, &QMenu::triggered, menu, &QMenu::hide);
    controller->outlets.pulldownMenu->setMenu(menu);
}

void PaneNib::connectListActions()
{
    const auto &outlets = mController->outlets;
    connectClicks(mController.get(),
                  {{outlets.addButton, &Controller::addCameras},
                   {outlets.removeButton, &Controller::removeCamera},
                   {outlets.startButton, &Controller::startVideo}});
}

void PaneNib::connectSettingsActions()
{
    const auto &outlets = mController->outlets;
    connectSwitch(mController.get(), outlets.enableKS7Checkbox, &Controller::enableKS7Checkbox);
    connectSwitch(mController.get(), outlets.statusMenuCheckbox, &Controller::statusMenuCheckbox);
    connectSwitch(mController.get(), outlets.debugLog, &Controller::debugLogCheckbox);
    connectAction(outlets.optimizeForPopUp, QOverload<int>::of(&QComboBox::activated), mController.get(),
                  &Controller::optimizeForChanged);
}

void PaneNib::connectMaintenanceActions()
{
    auto *controller = mController.get();
    const auto &outlets = controller->outlets;
    connectClicks(
        controller,
        {{buttonIn(outlets.propertiesSheet, "propertiesOkayButton"), &Controller::propertiesOkay},
         {buttonIn(outlets.propertiesSheet, "propertiesCancelButton"), &Controller::propertiesCancel},
         {outlets.ignoreCheckbox, &Controller::ignoreCamera},
         {outlets.pinOkayButton, &Controller::pinOkay},
         {buttonIn(outlets.pinSheet, "pinCancelButton"), &Controller::pinCancel},
         {outlets.firmwareContinueButton, &Controller::firmwareContinue},
         {outlets.firmwareCancelButton, &Controller::firmwareCancel}});
    QObject::connect(outlets.newPINText, &QLineEdit::textChanged, controller,
                     [controller] { controller->controlTextDidChange({}); });
    QObject::connect(outlets.newPINText, &QLineEdit::returnPressed, controller, &Controller::newPINEntered);
    outlets.propertiesSheet->setCancelAction([controller] { controller->propertiesCancel(nullptr); });
    outlets.pinSheet->setCancelAction([controller] { controller->pinCancel(nullptr); });
    outlets.firmwareSheet->setCancelAction([controller] {
        if (!controller->outlets.firmwareCancelButton->isHidden())
            controller->firmwareCancel(nullptr);
    });
}

void PaneNib::showAboutBox()
{
    if (!mAboutBox) {
        mAboutBox = new KS7AboutBoxWindow(mMainView);
        mAboutBox->awakeFromNib(*mServices.bundle, mServices.workspace);
        mAboutBox->setDiagnosis([services = mServices, protocols = mProtocols] {
            return Diagnosis(services, protocols).report();
        });
    }
    mAboutBox->show();
    mAboutBox->raise();
    mAboutBox->activateWindow();
}

void PaneNib::awake()
{
    mPreviewController->qtView->awakeFromNib();
    mPreviewController->awakeFromNib();
    mController->outlets.cameraListTable->awakeFromNib(mServices.runLoop);
    mController->awakeFromNib();
}
