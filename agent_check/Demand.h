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

/// The result of checking one demand.
struct Outcome {
    Result result = Result::Pass;
    /// The wrong result, or the reason for a skip. Empty for a pass.
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
/// Passes if the problem is empty, otherwise fails with it.
inline Outcome judged(const QString &problem)
{
    return problem.isEmpty() ? pass() : fail(problem);
}

/// One demand of the contract; the report has one line for it.
struct Demand {
    /// "group.name", not translated.
    QString id;
    QString text;
    std::function<Outcome(Bench &)> check;
    /// Whether it is checked even after the agent has ended.
    bool needsAgent = true;
    [[nodiscard]] QString group() const { return id.section(QLatin1Char('.'), 0, 0); }
};

using Demands = QVector<Demand>;

/// All demands in the order in which they are checked.
Demands allDemands();
/// The names of the groups, in the same order.
QStringList groupNames();

// Each group is defined in its own file.
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
