#pragma once

#include "platform/desktop/Workspace.h"

#include <QStringList>
#include <QUrl>

/// Opens nothing and records each request in `opened`: "url …", "file …" or "select …".
class FakeWorkspace final : public platform::Workspace {
public:
    bool openURL(const QUrl &url) override;
    bool openFile(const QString &path) override;
    bool selectFile(const QString &path) override;
    QStringList opened;
};
