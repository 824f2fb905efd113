#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace agent_check {

class Bench;

/// Exit codes of the program.
enum ExitCode { NothingFailed = 0, SomethingFailed = 1, CannotCheck = 2 };

enum class Result { Pass, Fail, Skip };

/// What one demand found.
struct Outcome {
    Result result = Result::Pass;
    /// What came instead, or why nothing was checked; empty for a pass.
    QString detail = {};
};

inline Outcome pass()
{
    return {};
}
inline Outcome fail(const QString &detail)
{
    return {Result::Fail, detail};
}
inline Outcome skip(const QString &reason)
{
    return {Result::Skip, reason};
}
/// A pass without a problem.
inline Outcome judged(const QString &problem)
{
    return problem.isEmpty() ? pass() : fail(problem);
}

/// One demand of the contract, one line of the report.
struct Demand {
    /// "group.name"; stays the same in every language.
    QString id;
    QString text;
    std::function<Outcome(Bench &)> check;
    /// Whether it may be looked at when the agent has gone.
    bool needsAgent = true;
    [[nodiscard]] QString group() const { return id.section(QLatin1Char('.'), 0, 0); }
};

using Demands = QVector<Demand>;

/// All demands in the order in which they are checked.
Demands allDemands();
/// The groups in that order.
QStringList groupNames();

// The groups, each in its file.
Demands nameDemands();
Demands operationDemands();
Demands loadDemands();
Demands listDemands();
Demands oddDemands();
Demands postDemands();
Demands fileDemands();
Demands changeDemands();
Demands pictureDemands();
Demands endDemands();

} // namespace agent_check
