#pragma once

#include "platform/Services.h"

#include <QPointer>

#include <memory>

class KS7AboutBoxWindow;
class KS7PreviewController;
class KS7SettingsWindowController;
class PaneWords;
class QTranslator;
class QWidget;
class AgentProxyFactory;

/// Loads the interface files. Creates the view, the sheets and the objects behind them, and connects their
/// signals. Calls awakeFromNib() of each object afterwards.
class PaneNib {
public:
    PaneNib(const platform::Services &services, std::shared_ptr<AgentProxyFactory> protocols);
    ~PaneNib();

    [[nodiscard]] QWidget *mainView() const { return mMainView; }
    [[nodiscard]] KS7SettingsWindowController *settingsWindowController() const { return mController.get(); }
    /// Calls awakeFromNib() of the preview and the table, then of the controller, which uses them.
    void awake();

private:
    void loadMainView();
    void connectNoticeStrip();
    void dressListButtons();
    void loadSheets();
    void loadPropertiesSheet();
    void loadPasskeySheet();
    void loadFirmwareSheet();
    void fillPulldownMenu();
    void connectListActions();
    void connectSettingsActions();
    void connectMaintenanceActions();
    void showAboutBox();

    platform::Services mServices;
    std::shared_ptr<AgentProxyFactory> mProtocols;
    std::unique_ptr<QTranslator> mTranslator;
    QWidget *mMainView = nullptr;
    /// The main view owns the about box and deletes it.
    QPointer<KS7AboutBoxWindow> mAboutBox;
    std::unique_ptr<PaneWords> mWords;
    std::unique_ptr<KS7PreviewController> mPreviewController;
    std::unique_ptr<KS7SettingsWindowController> mController;
};
