#include "agent_check/Translation.h"
#include "agent_check/report/Report.h"

#include <QStringList>

#include <cstdio>

#include <unistd.h>

namespace agent_check {

namespace {

const char *const EraseLine = "\r\033[K";

class TextReport final : public Report {
public:
    void began(const Demand &demand) override
    {
        if (!mIsTerminal)
            return;
        std::printf("%s…     %s", EraseLine, qUtf8Printable(demand.id));
        std::fflush(stdout);
    }

    void found(const Demand &demand, const Outcome &outcome) override
    {
        count(outcome);
        // simplified() replaces line breaks in texts of the agent by spaces, because the report has one line
        // per demand.
        const QString detail = outcome.detail.simplified();
        const QString text =
            detail.isEmpty() ? demand.text : QString(demand.text + QStringLiteral(": ") + detail);
        print(QStringLiteral("%1 %2: %3").arg(mark(outcome.result), demand.id, text));
    }

    void end(bool isComplete) override
    {
        if (mIsTerminal)
            std::printf("%s", EraseLine);
        print(Translation::tr("%1 passed, %2 failed, %3 skipped")
                  .arg(number(Result::Pass))
                  .arg(number(Result::Fail))
                  .arg(number(Result::Skip)));
        if (!isComplete)
            print(Translation::tr("The check was interrupted."));
    }

private:
    [[nodiscard]] QString mark(Result result) const
    {
        const QStringList words{Translation::tr("pass", "result of a demand"),
                                Translation::tr("FAIL", "result of a demand"),
                                Translation::tr("skip", "result of a demand")};
        int width = 0;
        for (const QString &word : words)
            width = qMax(width, int(word.size()));
        QString word = words.at(int(result)).leftJustified(width + 1);
        if (!mIsTerminal || qEnvironmentVariableIsSet("NO_COLOR"))
            return word;
        const char *const colour = result == Result::Pass ? "32" : result == Result::Fail ? "1;31" : "33";
        return QStringLiteral("\033[%1m%2\033[m").arg(QLatin1String(colour), word);
    }

    void print(const QString &line) const
    {
        std::printf("%s%s\n", mIsTerminal ? EraseLine : "", qUtf8Printable(line));
        std::fflush(stdout);
    }

    const bool mIsTerminal = ::isatty(STDOUT_FILENO) != 0;
};

} // namespace

std::unique_ptr<Report> makeTextReport()
{
    return std::make_unique<TextReport>();
}

} // namespace agent_check
