#pragma once

#include <QTranslator>

/// Installs Qt's and this program's translations for the session's language while the object exists.
class Translators {
public:
    Translators();

private:
    static void install(QTranslator &translator, const QString &name, const QString &folder);

    QTranslator mToolkit;
    QTranslator mOwn;
};
