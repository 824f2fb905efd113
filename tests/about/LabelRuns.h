#pragma once

#include <QLabel>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

/// A sequence of a label's characters that have the same format.
struct Run {
    QString text;
    bool underlined;
    QColor color;

    bool operator==(const Run &other) const = default;
};

inline char *toString(const Run &run)
{
    return QTest::toString(
        QStringLiteral("\"%1\" underlined %2, %3").arg(run.text).arg(run.underlined).arg(run.color.name()));
}

inline QList<Run> runsOf(const QLabel *label)
{
    QTextDocument document;
    document.setHtml(label->text());
    QList<Run> runs;
    for (auto block = document.begin(); block != document.end(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const auto format = part.fragment().charFormat();
            const auto color =
                format.hasProperty(QTextFormat::ForegroundBrush) ? format.foreground().color() : QColor();
            runs.append({part.fragment().text(), format.fontUnderline(), color});
        }
    }
    return runs;
}

inline Run plain(const QString &text)
{
    return {text, false, {}};
}

inline Run link(const QString &text)
{
    return {text, true, QColor(Qt::blue)};
}
