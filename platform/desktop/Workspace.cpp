#include "platform/desktop/Workspace.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFileInfo>
#include <QObject>
#include <QStringList>

namespace platform {
namespace {

const auto ConnectionName = QStringLiteral("ks7-workspace");
const auto FileManagerService = QStringLiteral("org.freedesktop.FileManager1");
const auto FileManagerPath = QStringLiteral("/org/freedesktop/FileManager1");

bool openFolderOf(const QString &path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).absolutePath()));
}

QDBusMessage showItems(const QString &path)
{
    auto message = QDBusMessage::createMethodCall(FileManagerService, FileManagerPath, FileManagerService,
                                                  QStringLiteral("ShowItems"));
    const QUrl url = QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath());
    message << QStringList{url.toString(QUrl::FullyEncoded)} << QString();
    return message;
}

/// A connection of the pane's own, opened when somebody wants to see a file: the host's stays the host's. It
/// outlives whoever asked: Qt would close it in a thread of its own, with answers still on their way.
QDBusConnection sessionBus()
{
    // A connection that has broken stays broken under its name.
    if (!QDBusConnection(ConnectionName).isConnected())
        QDBusConnection::disconnectFromBus(ConnectionName);
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, ConnectionName);
}

class DesktopWorkspace final : public Workspace {
public:
    bool openURL(const QUrl &url) override { return url.isValid() && QDesktopServices::openUrl(url); }

    bool openFile(const QString &path) override
    {
        return QFileInfo::exists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    }

    bool selectFile(const QString &path) override
    {
        if (!QFileInfo::exists(path))
            return false;
        const QDBusConnection bus = sessionBus();
        if (!bus.isConnected())
            return openFolderOf(path);
        // The file manager may have to be started first; nobody waits for that.
        auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(showItems(path)), &mContext);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &mContext, [watcher, path] {
            if (QDBusPendingReply<>(*watcher).isError())
                openFolderOf(path);
            watcher->deleteLater();
        });
        return true;
    }

private:
    QObject mContext;
};

} // namespace

std::shared_ptr<Workspace> makeWorkspace()
{
    return std::make_shared<DesktopWorkspace>();
}

} // namespace platform
