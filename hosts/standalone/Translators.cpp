#include "hosts/standalone/Translators.h"

#include "platform/QtCompat.h"

#include <QCoreApplication>
#include <QLocale>

Translators::Translators()
{
    install(mToolkit, QStringLiteral("qtbase"), platform::qtTranslationsPath());
    install(mOwn, QStringLiteral("ks7"), QStringLiteral(":/host"));
}

void Translators::install(QTranslator &translator, const QString &name, const QString &folder)
{
    if (translator.load(QLocale(), name, QStringLiteral("_"), folder))
        QCoreApplication::installTranslator(&translator);
}
