#pragma once

#include <QCoreApplication>

namespace agent_check {

/// The translation context of ks7-agent-check. Functions without a class use its tr().
struct Translation {
    Q_DECLARE_TR_FUNCTIONS(ks7_agent_check)
};

} // namespace agent_check
