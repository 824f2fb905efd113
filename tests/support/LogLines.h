#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/// Collects the log messages of the category "ks7.platform" while it exists. Use one object at a time, in the
/// main thread.
class LogLines {
public:
    LogLines()
    {
        lines.clear();
        previous = qInstallMessageHandler(note);
    }
    ~LogLines() { qInstallMessageHandler(previous); }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;

    static inline QStringList lines;

private:
    static void note(QtMsgType type, const QMessageLogContext &context, const QString &line)
    {
        if (qstrcmp(context.category, "ks7.platform") == 0)
            lines.append(line);
        else
            previous(type, context, line);
    }

    static inline QtMessageHandler previous = nullptr;
};
