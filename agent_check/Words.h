#pragma once

#include <QCoreApplication>

namespace agent_check {

/// The translation context of this program.
struct Words {
    Q_DECLARE_TR_FUNCTIONS(ks7_agent_check)
};

} // namespace agent_check
