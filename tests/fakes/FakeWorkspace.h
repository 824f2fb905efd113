#pragma once

#include "platform/desktop/Workspace.h"

#include <QStringList>
#include <QUrl>

/// Opens nothing. Records each request in `opened` as "url …", "file …", "select …" or "bluetooth settings".
class FakeWorkspace final : public platform::Workspace {
public:
    bool openURL(const QUrl &url) override;
    bool openFile(const QString &path) override;
    bool selectFile(const QString &path) override;
    bool openBluetoothSettings() override;
    QStringList opened;
    /// Whether a program with Bluetooth settings is installed.
    bool hasBluetoothSettings = true;
};
