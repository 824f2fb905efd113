#pragma once

#include "pane/PreferencePane.h"

#include <QLabel>
#include <QStringList>

/// A pane that records its host's calls.
class RecordingPane : public platform::PreferencePane {
public:
    RecordingPane() { setMainView(&view); }

    void willSelect() override { told << QStringLiteral("willSelect"); }
    void didUnselect() override { told << QStringLiteral("didUnselect"); }

    QLabel view{QStringLiteral("the pane")};
    QStringList told;
};
