#pragma once

#include <QString>
#include <QtPlugin>

#include <memory>

class QWidget;

namespace platform {

/// The interface through which a host uses a pane. The host shows the main view and calls willSelect() and
/// didUnselect(). It must not destroy the pane; it may move the view from one window to another.
class PreferencePane {
public:
    virtual ~PreferencePane() = default;

    [[nodiscard]] QWidget *mainView() const { return mMainView; }
    virtual void willSelect() { }
    virtual void didUnselect() { }

protected:
    void setMainView(QWidget *view) { mMainView = view; }

private:
    QWidget *mMainView = nullptr;
};

/// The interface of the plug-in's root object.
class PreferencePaneFactory {
public:
    virtual ~PreferencePaneFactory() = default;

    /// Keeps Qt from waiting endlessly for a session bus that does not reply. Only a host with a process of
    /// its own calls this function, once, before it constructs the QApplication.
    virtual void prepareProcess() = 0;
    /// Returns the process's only pane, which the plug-in owns. The first call creates the pane.
    virtual PreferencePane *pane() = 0;
    /// Returns a description of this machine for a bug report. Needs no display.
    [[nodiscard]] virtual QString diagnose() const = 0;
};

} // namespace platform

#define KS7_PREFERENCE_PANE_IID "com.orvex.PreferencePaneFactory/3"
Q_DECLARE_INTERFACE(platform::PreferencePaneFactory, KS7_PREFERENCE_PANE_IID)
