#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <clocale>

/// Sets a locale with a decimal comma. No such locale has to be installed, because the class writes the file
/// LC_NUMERIC of the locale itself.
class CommaLocale {
public:
    CommaLocale()
        : mBefore(std::setlocale(LC_NUMERIC, nullptr))
    {
        const QByteArray category =
            QByteArray::fromHex("14110320060000002000000022000000230000002400000028000000"
                                "2c0000002c0000002c00000000000000414e53495f58332e342d3139363800");
        QFile file(mFolder.filePath(QStringLiteral("comma/LC_NUMERIC")));
        QDir(mFolder.path()).mkdir(QStringLiteral("comma"));
        if (file.open(QIODevice::WriteOnly))
            file.write(category);
        file.close();
        qputenv("LOCPATH", QFile::encodeName(mFolder.path()));
        std::setlocale(LC_NUMERIC, "comma");
    }
    ~CommaLocale()
    {
        std::setlocale(LC_NUMERIC, mBefore.constData());
        qunsetenv("LOCPATH");
    }
    CommaLocale(const CommaLocale &) = delete;
    CommaLocale &operator=(const CommaLocale &) = delete;
    [[nodiscard]] bool inForce() const { return QByteArray(std::localeconv()->decimal_point) == ","; }

private:
    QTemporaryDir mFolder;
    QByteArray mBefore;
};
