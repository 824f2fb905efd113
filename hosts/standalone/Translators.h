#pragma once

#include <QTranslator>

/// Installs the texts of Qt and of this program in the language of the session, as long as it lives.
class Translators {
public:
    Translators();

private:
    static void install(QTranslator &translator, const QString &name, const QString &folder);

    QTranslator mToolkit;
    QTranslator mOwn;
};
