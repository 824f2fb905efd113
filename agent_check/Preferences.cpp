#include "agent_check/Preferences.h"

#include "agent/AgentContract.h"
#include "agent_check/Translation.h"
#include "platform/preferences/AtomicFile.h"
#include "platform/preferences/UserDefaults.h"

#include <cerrno>
#include <cstring>

namespace agent_check {

QString preferencesFile()
{
    return platform::fileOfDomain(KS7Domain::Name);
}

Preferences Preferences::read()
{
    const auto contents = platform::AtomicFile::read(preferencesFile());
    if (contents.error == ENOENT)
        return {Translation::tr("there is no file %1").arg(preferencesFile()), {}};
    if (contents.error != 0)
        return {QString::fromLocal8Bit(std::strerror(contents.error)), {}};
    const auto values = platform::PropertyListDictionary::fromXml(contents.bytes);
    if (!values)
        return {
            Translation::tr("%1 is no XML property list in UTF-8 with a dictionary").arg(preferencesFile()),
            {}};
    return {QString(), *values};
}

QString Preferences::write() const
{
    const int error = platform::AtomicFile::replace(preferencesFile(), values.toXml());
    return error == 0 ? QString() : QString::fromLocal8Bit(std::strerror(error));
}

bool Preferences::isOn(const QString &key) const
{
    const QVariant value = values.value(key);
    return !value.isValid() || value.toDouble() != 0;
}

bool isServiceOn()
{
    return Preferences::read().isOn(PreferenceKeys::KS7On);
}

} // namespace agent_check
