#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

namespace agent_check {

class CheckContext;

/// The exit codes of ks7-agent-check.
enum ExitCode { NothingFailed = 0, SomethingFailed = 1, CannotCheck = 2 };

enum class Result { Pass, Fail, Skip };

/// The outcome of checking one demand.
struct Outcome {
    Result result = Result::Pass;
    /// For a failure, the difference from the contract. For a skip, its reason. Empty for a pass.
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
/// Passes if `problem` is empty. Otherwise fails with `problem` as its detail.
inline Outcome judged(const QString &problem)
{
    return problem.isEmpty() ? pass() : fail(problem);
}

/// A demand that the contract makes on an agent. The report has one line per demand.
struct Demand {
    /// The identifier "group.name", which is not translated.
    QString id;
    QString text;
    std::function<Outcome(CheckContext &)> check;
    /// Whether the demand can be checked only while the agent runs.
    bool needsAgent = true;
    [[nodiscard]] QString group() const { return id.section(QLatin1Char('.'), 0, 0); }
};

using Demands = QVector<Demand>;

/// Returns all demands in the order in which they are checked.
Demands allDemands();
/// Returns the names of the groups in the order of allDemands().
QStringList groupNames();

// Each function returns the demands of one group. Each is defined in its own file: nameDemands() in
// NameDemands.cpp, and so on. The identifiers of invalidArgumentDemands() begin with "odd".
Demands nameDemands();
Demands operationDemands();
Demands loadDemands();
Demands listDemands();
Demands invalidArgumentDemands();
Demands postDemands();
Demands fileDemands();
Demands changeDemands();
Demands pictureDemands();
Demands endDemands();

} // namespace agent_check
