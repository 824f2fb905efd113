#include "platform/desktop/HostClasses.h"

#include <QCoreApplication>

namespace platform {
namespace {

/// Finds the children of QApplication. Hosts publish an object there, with its class's name as object name.
class ApplicationChildren final : public HostClasses {
public:
    QObject *classNamed(const QString &name) override
    {
        auto *application = QCoreApplication::instance();
        if (!application || name.isEmpty())
            return nullptr;
        return application->findChild<QObject *>(name, Qt::FindDirectChildrenOnly);
    }
};

} // namespace

std::shared_ptr<HostClasses> makeHostClasses()
{
    return std::make_shared<ApplicationChildren>();
}

} // namespace platform
