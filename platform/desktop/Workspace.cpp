#include "platform/desktop/Workspace.h"

#include "platform/bus/BusConnection.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QFileInfo>
#include <QObject>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <utility>
#include <vector>

namespace platform {
namespace {

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

/// Commands that show the Bluetooth settings. The command of the running desktop comes first.
std::vector<QStringList> bluetoothSettings()
{
    std::vector<QStringList> commands{
        {QStringLiteral("systemsettings"), QStringLiteral("kcm_bluetooth")},
        {QStringLiteral("systemsettings5"), QStringLiteral("kcm_bluetooth")},
        {QStringLiteral("gnome-control-center"), QStringLiteral("bluetooth")},
        {QStringLiteral("blueman-manager")},
    };
    if (qgetenv("XDG_CURRENT_DESKTOP").contains("GNOME"))
        std::swap(commands[0], commands[2]);
    return commands;
}

bool start(const QStringList &command)
{
    const QString program = QStandardPaths::findExecutable(command.first());
    return !program.isEmpty() && QProcess::startDetached(program, command.mid(1));
}

class DesktopWorkspace final : public Workspace {
public:
    explicit DesktopWorkspace(std::shared_ptr<BusConnection> bus)
        : mBus(std::move(bus))
    {
    }

    bool openURL(const QUrl &url) override { return url.isValid() && QDesktopServices::openUrl(url); }

    bool openFile(const QString &path) override
    {
        return QFileInfo::exists(path) && QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    }

    bool selectFile(const QString &path) override
    {
        if (!QFileInfo::exists(path))
            return false;
        mBus->reopenIfLost();
        if (!mBus->isOpen())
            return openFolderOf(path);
        // Call asynchronously, because the bus may first have to start the file manager.
        auto *watcher = new QDBusPendingCallWatcher(mBus->connection().asyncCall(showItems(path)), &mContext);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &mContext, [watcher, path] {
            if (QDBusPendingReply<>(*watcher).isError())
                openFolderOf(path);
            watcher->deleteLater();
        });
        return true;
    }

    bool openBluetoothSettings() override
    {
        const auto commands = bluetoothSettings();
        return std::any_of(commands.begin(), commands.end(), start);
    }

private:
    std::shared_ptr<BusConnection> mBus;
    QObject mContext;
};

} // namespace

std::shared_ptr<Workspace> makeWorkspace(std::shared_ptr<BusConnection> bus)
{
    return std::make_shared<DesktopWorkspace>(std::move(bus));
}

} // namespace platform
