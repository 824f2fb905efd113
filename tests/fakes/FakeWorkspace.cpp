#include "tests/fakes/FakeWorkspace.h"

bool FakeWorkspace::openURL(const QUrl &url)
{
    opened.append(QStringLiteral("url ") + url.toString());
    return true;
}

bool FakeWorkspace::openFile(const QString &path)
{
    opened.append(QStringLiteral("file ") + path);
    return true;
}

bool FakeWorkspace::selectFile(const QString &path)
{
    opened.append(QStringLiteral("select ") + path);
    return true;
}

bool FakeWorkspace::openBluetoothSettings()
{
    opened.append(QStringLiteral("bluetooth settings"));
    return hasBluetoothSettings;
}
