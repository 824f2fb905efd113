#pragma once

#include <QString>
#include <QtPlugin>

#include <memory>

class QWidget;

namespace platform {

class Bundle;

/// The interface that a settings host loads: one view, and calls for its showing and hiding. A pane is never
/// destroyed; its view may move from one window to another.
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

/// Interface of the plug-in's root object.
class PreferencePaneFactory {
public:
    virtual ~PreferencePaneFactory() = default;

    /// Call once before the QApplication is constructed, in hosts that run in a process of their own.
    virtual void prepareProcess() = 0;
    /// The process's one pane, owned by the plug-in. The first call creates it.
    virtual PreferencePane *pane() = 0;
    /// A report about this machine for a bug report. Needs no window.
    [[nodiscard]] virtual QString diagnose() const = 0;
};

} // namespace platform

#define KS7_PREFERENCE_PANE_IID "com.orvex.PreferencePaneFactory/3"
Q_DECLARE_INTERFACE(platform::PreferencePaneFactory, KS7_PREFERENCE_PANE_IID)
