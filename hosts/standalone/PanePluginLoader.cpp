#include "hosts/standalone/PanePluginLoader.h"

#include "pane/PreferencePane.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString pluginFile()
{
    // Do not use QCoreApplication::applicationDirPath(): the plug-in is loaded before the QApplication
    // exists.
    const QDir here = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).dir();
    const QString built = here.filePath(QStringLiteral("../plugins/ks7/ks7pane.so"));
    return QFileInfo::exists(built) ? built
                                    : here.filePath(QStringLiteral(KS7_INSTALLED_PLUGINS "/ks7pane.so"));
}

} // namespace

PanePluginLoader::PanePluginLoader()
    : mLoader(pluginFile())
    , mFactory(qobject_cast<platform::PreferencePaneFactory *>(mLoader.instance()))
{
}

QString PanePluginLoader::error() const
{
    return mLoader.isLoaded() ? tr("The file is not a KS-7 pane plug-in.") : mLoader.errorString();
}
