#pragma once

#include "agent_check/Demand.h"

#include <QJsonArray>

#include <memory>

namespace agent_check {

/// Receives the outcome of each demand.
class Report {
public:
    virtual ~Report() = default;
    /// Called before a demand is checked.
    virtual void began(const Demand & /*demand*/) { }
    virtual void found(const Demand &demand, const Outcome &outcome) = 0;
    /// Called after the last demand. `isComplete` is false after an interruption.
    virtual void end(bool isComplete) = 0;

    [[nodiscard]] bool hasFailures() const { return mCounts[int(Result::Fail)] > 0; }

protected:
    void count(const Outcome &outcome) { ++mCounts[int(outcome.result)]; }
    [[nodiscard]] int number(Result result) const { return mCounts[int(result)]; }

private:
    int mCounts[3] = {};
};

/// Prints a line for each demand. On a terminal it adds colours and the demand that is being checked.
std::unique_ptr<Report> makeTextReport();
/// Prints one JSON object at the end.
std::unique_ptr<Report> makeJsonReport();

} // namespace agent_check
