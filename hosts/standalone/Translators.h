#pragma once

#include <QTranslator>

/// Installs the translations of Qt and of ks7-preferences for the session's language. The destructor removes
/// them.
class Translators {
public:
    Translators();

private:
    static void install(QTranslator &translator, const QString &name, const QString &folder);

    QTranslator mToolkit;
    QTranslator mOwn;
};
