#pragma once

#include "agent_check/demands/Demand.h"

#include <QJsonArray>

#include <memory>

namespace agent_check {

/// Prints the outcomes of the demands and counts the failures.
class Report {
public:
    virtual ~Report() = default;
    /// Called before a demand is checked, which may take some time.
    virtual void began(const Demand & /*demand*/) { }
    virtual void found(const Demand &demand, const Outcome &outcome) = 0;
    /// Called after the last demand. `isComplete` is false if a signal has ended the check early.
    virtual void end(bool isComplete) = 0;

    [[nodiscard]] bool hasFailures() const { return mCounts[int(Result::Fail)] > 0; }

protected:
    void count(const Outcome &outcome) { ++mCounts[int(outcome.result)]; }
    [[nodiscard]] int number(Result result) const { return mCounts[int(result)]; }

private:
    int mCounts[3] = {};
};

/// Creates a report that prints a line per demand. On a terminal it also uses colours and shows the demand
/// that is being checked.
std::unique_ptr<Report> makeTextReport();
/// Creates a report that prints one JSON object after the last demand.
std::unique_ptr<Report> makeJsonReport();

} // namespace agent_check
