#include "tests/fakes/FakeBundle.h"

#include "pane/PaneBundle.h"

#include <QDir>
#include <QFile>

QString FakeBundle::pathForResource(const QString &name, const QString &type) const
{
    if (folder.isEmpty())
        return makePaneBundle()->pathForResource(name, type);
    const QString path = QDir(folder).filePath(name + QLatin1Char('.') + type);
    return QFile::exists(path) ? path : QString();
}
