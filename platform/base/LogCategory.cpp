#include "platform/base/LogCategory.h"

Q_LOGGING_CATEGORY(KS7_PLATFORM, "ks7.platform")
