#pragma once

#include "pane/PreferencePane.h"

#include <QLabel>
#include <QStringList>

/// A pane that keeps a list of what the host tells it.
class RecordingPane : public platform::PreferencePane {
public:
    RecordingPane() { setMainView(&view); }

    void willSelect() override { told << QStringLiteral("willSelect"); }
    void didUnselect() override { told << QStringLiteral("didUnselect"); }

    QLabel view{QStringLiteral("the pane")};
    QStringList told;
};
