#include "agent/AgentContract.h"
#include "agent/NotificationNames.h"
#include "agent_check/CheckContext.h"
#include "agent_check/Preferences.h"
#include "agent_check/Translation.h"
#include "agent_check/demands/Demand.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using namespace std::chrono_literals;

namespace agent_check {

namespace {

constexpr auto StoreTime = 5000ms;
const QString ForeignPrefix = QStringLiteral("com.orvex.KS7AgentCheck.");

/// Returns a value of each type that a property list can contain, under keys that the agent does not know.
QVariantMap foreignValues()
{
    return {{ForeignPrefix + QStringLiteral("Boolean"), true},
            {ForeignPrefix + QStringLiteral("Integer"), -9000000000LL},
            {ForeignPrefix + QStringLiteral("Real"), 0.5},
            {ForeignPrefix + QStringLiteral("Text"), QString::fromUtf8("<K\xc3\xbc\x63he> & \"x\"")},
            {ForeignPrefix + QStringLiteral("Data"), QByteArray("\0\1\xff", 3)},
            {ForeignPrefix + QStringLiteral("Date"), QDateTime::fromSecsSinceEpoch(1000000000).toUTC()},
            {ForeignPrefix + QStringLiteral("Array"), QVariantList{1LL, QStringLiteral("a")}},
            {ForeignPrefix + QStringLiteral("Dictionary"), QVariantMap{{QStringLiteral("a"), false}}}};
}

bool isBoolean(const QVariant &value)
{
    // A boolean preference may also be stored as an integer, because the pane reads both.
    return value.userType() == QMetaType::Bool || value.userType() == QMetaType::LongLong;
}

bool isMapOf(const QVariant &value, bool (*isRight)(const QVariant &))
{
    if (value.userType() != QMetaType::QVariantMap)
        return false;
    const QVariantMap map = value.toMap();
    return std::all_of(map.begin(), map.end(), isRight);
}

bool hasItsType(const QString &key, const QVariant &value)
{
    if (key == PreferenceKeys::VideoSize2)
        return value.userType() == QMetaType::LongLong;
    if (key == PreferenceKeys::FriendlyNames)
        return isMapOf(value, [](const QVariant &name) { return name.userType() == QMetaType::QString; });
    if (key == PreferenceKeys::IgnoredCams)
        return isMapOf(value, isBoolean);
    return isBoolean(value);
}

Outcome checkFile(CheckContext &)
{
    return judged(Preferences::read().problem);
}

Outcome checkTypes(CheckContext &)
{
    const Preferences file = Preferences::read();
    if (!file.problem.isEmpty())
        return skip(file.problem);
    for (const QString &key :
         {PreferenceKeys::KS7On, PreferenceKeys::ShowStatusMenu, PreferenceKeys::VideoSize2,
          PreferenceKeys::LogToFile, PreferenceKeys::FriendlyNames, PreferenceKeys::IgnoredCams}) {
        const QVariant value = file.values.value(key);
        if (value.isValid() && !hasItsType(key, value))
            return fail(Translation::tr("the value of \"%1\" has the wrong type").arg(key));
    }
    return pass();
}

Outcome checkMode(CheckContext &context)
{
    const QFileInfo file(preferencesFile());
    if (!context.launched || context.hadPreferencesFile || !file.exists())
        return skip(Translation::tr("the agent created no preferences file during this check"));
    const auto open = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    return file.permissions() & open
        ? fail(Translation::tr("other users may read or write the preferences file"))
        : pass();
}

/// Makes the agent store ShowStatusMenu. Returns false if the file does not contain the value in time.
bool toggle(const CheckContext &context, bool on)
{
    context.post(NotificationNames::ToggleStatusMenu, {{UserInfoKeys::Value, on ? 1 : 0}});
    return context.waitFor(
        [on] {
            const Preferences file = Preferences::read();
            return file.problem.isEmpty() && file.values.value(PreferenceKeys::ShowStatusMenu).isValid()
                && file.isOn(PreferenceKeys::ShowStatusMenu) == on;
        },
        StoreTime);
}

/// Checks whether the file that the agent has written still contains the changes of another program, which
/// are in `mine`.
void compare(const Preferences &mine, SettingsFinding &finding)
{
    const Preferences file = Preferences::read();
    if (file.values.value(PreferenceKeys::VideoSize2) != mine.values.value(PreferenceKeys::VideoSize2))
        finding.seen = fail(Translation::tr("the agent replaced the new value of %1 by the old one")
                                .arg(PreferenceKeys::VideoSize2));
    const QVariantMap foreign = foreignValues();
    for (auto entry = foreign.begin(); entry != foreign.end(); ++entry) {
        const QVariant value = file.values.value(entry.key());
        if (value.userType() != entry.value().userType() || value != entry.value()) {
            const QString problem = value.isValid() ? Translation::tr("the agent has changed the key %1")
                                                    : Translation::tr("the agent has dropped the key %1");
            finding.foreign = fail(problem.arg(entry.key()));
        }
    }
}

void restore(const CheckContext &context, const Preferences &before)
{
    toggle(context, before.isOn(PreferenceKeys::ShowStatusMenu));
    Preferences file = Preferences::read();
    if (!file.problem.isEmpty())
        return;
    const QStringList keys = foreignValues().keys() + QStringList(PreferenceKeys::VideoSize2);
    for (const QString &key : keys)
        file.values.setValue(key, before.values.value(key));
    static_cast<void>(file.write());
    context.post(NotificationNames::ChangedOptimizedPreference);
}

/// Changes the file as another program would do it, makes the agent write the file, and returns the outcomes.
SettingsFinding tryOut(const CheckContext &context)
{
    const Preferences before = Preferences::read();
    if (!before.problem.isEmpty())
        return {skip(before.problem), skip(before.problem), skip(before.problem)};
    Preferences mine = before;
    const QVariantMap foreign = foreignValues();
    for (auto entry = foreign.begin(); entry != foreign.end(); ++entry)
        mine.values.setValue(entry.key(), entry.value());
    const bool isSmooth = before.values.value(PreferenceKeys::VideoSize2).toInt() == 0;
    mine.values.setValue(PreferenceKeys::VideoSize2, isSmooth ? 1LL : 0LL);
    const QString problem = mine.write();
    if (!problem.isEmpty())
        return {skip(problem), skip(problem), skip(problem)};
    context.post(NotificationNames::ChangedOptimizedPreference);
    SettingsFinding finding;
    if (toggle(context, !before.isOn(PreferenceKeys::ShowStatusMenu)))
        compare(mine, finding);
    else
        finding = {
            fail(Translation::tr("the agent did not store %1 in time").arg(PreferenceKeys::ShowStatusMenu)),
            skip(Translation::tr("the agent did not write the preferences file")),
            skip(Translation::tr("the agent did not write the preferences file"))};
    restore(context, before);
    return finding;
}

Demand settingsDemand(const char *id, const QString &text, Outcome SettingsFinding::*part)
{
    return {QLatin1String(id), text, [part](CheckContext &context) {
                if (!context.mayChange())
                    return skipForChanges();
                if (!context.settings)
                    context.settings = tryOut(context);
                return *context.settings.*part;
            }};
}

} // namespace

Demands fileDemands()
{
    return {
        {QStringLiteral("file.there"), Translation::tr("The preferences file is a property list"), checkFile},
        {QStringLiteral("file.types"),
         Translation::tr("The keys of the contract have values of the right types"), checkTypes},
        {QStringLiteral("file.mode"),
         Translation::tr("Only the user may read or write a new preferences file"), checkMode},
        settingsDemand("file.toggle", Translation::tr("The agent stores the value of KS7ToggleStatusMenu"),
                       &SettingsFinding::toggled),
        settingsDemand(
            "file.seen",
            Translation::tr("The agent does not overwrite a value that another program has changed"),
            &SettingsFinding::seen),
        settingsDemand("file.foreign",
                       Translation::tr("The agent keeps the keys of other programs when it writes the file"),
                       &SettingsFinding::foreign),
    };
}

} // namespace agent_check
