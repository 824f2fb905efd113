#include "pane/PaneTranslator.h"

#include "platform/desktop/Bundle.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

namespace {

/// Returns the path of the best compiled translation, such as "de_AT" before "de"; empty without a matching
/// one.
QString translationFile(const platform::Bundle &bundle, const QLocale &locale)
{
    const QString language = locale.name();
    for (const QString &name : {language, language.section(QLatin1Char('_'), 0, 0)}) {
        QString path = bundle.pathForResource(QStringLiteral("ks7_") + name, QStringLiteral("qm"));
        if (!path.isEmpty())
            return path;
    }
    return {};
}

} // namespace

std::unique_ptr<QTranslator> makePaneTranslator(const platform::Bundle &bundle)
{
    auto translator = std::make_unique<QTranslator>();
    const QString file = translationFile(bundle, QLocale());
    if (file.isEmpty() || !translator->load(file))
        return nullptr;
    QCoreApplication::installTranslator(translator.get());
    return translator;
}
