#include "agent_check/report/Report.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

namespace agent_check {

namespace {

QString word(Result result)
{
    if (result == Result::Skip)
        return QStringLiteral("skip");
    return result == Result::Pass ? QStringLiteral("pass") : QStringLiteral("fail");
}

class JsonReport final : public Report {
public:
    void found(const Demand &demand, const Outcome &outcome) override
    {
        count(outcome);
        mDemands.append(QJsonObject{{QStringLiteral("id"), demand.id},
                                    {QStringLiteral("demand"), demand.text},
                                    {QStringLiteral("result"), word(outcome.result)},
                                    {QStringLiteral("detail"), outcome.detail}});
    }

    void end(bool isComplete) override
    {
        const QJsonObject report{{QStringLiteral("demands"), mDemands},
                                 {QStringLiteral("passed"), number(Result::Pass)},
                                 {QStringLiteral("failed"), number(Result::Fail)},
                                 {QStringLiteral("skipped"), number(Result::Skip)},
                                 {QStringLiteral("complete"), isComplete}};
        std::fputs(QJsonDocument(report).toJson().constData(), stdout);
        std::fflush(stdout);
    }

private:
    QJsonArray mDemands;
};

} // namespace

std::unique_ptr<Report> makeJsonReport()
{
    return std::make_unique<JsonReport>();
}

} // namespace agent_check
