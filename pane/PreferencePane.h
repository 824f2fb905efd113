#pragma once

#include <QString>
#include <QtPlugin>

#include <memory>

class QWidget;

namespace platform {

class Bundle;

/// What a settings host loads: one view, told when it comes on screen and when it goes.
/// A pane is never destroyed; its view may be taken out of one window and put into another.
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

/// The entry of a pane that is built as a plug-in.
class PreferencePaneFactory {
public:
    virtual ~PreferencePaneFactory() = default;

    /// For a host that runs in a process of its own: called once, before the QApplication is constructed.
    virtual void prepareProcess() = 0;
    /// The process's one pane, created on the first call; the plug-in keeps it.
    virtual PreferencePane *pane() = 0;
    /// For a host without a window: what the pane finds on this machine, as text for a bug report.
    [[nodiscard]] virtual QString diagnose() const = 0;
};

} // namespace platform

#define KS7_PREFERENCE_PANE_IID "com.orvex.PreferencePaneFactory/3"
Q_DECLARE_INTERFACE(platform::PreferencePaneFactory, KS7_PREFERENCE_PANE_IID)
