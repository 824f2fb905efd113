#include "simulator/bus/Recorder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace simulator {

namespace {

constexpr std::size_t MostEvents = 50'000;

QString json(const QVariant &value)
{
    const QByteArray array =
        QJsonDocument(QJsonArray{QJsonValue::fromVariant(value)}).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

} // namespace

void Recorder::record(Kind kind, const QString &text)
{
    mEvents.push_back({kind, text});
    if (mEvents.size() > MostEvents)
        mEvents.pop_front();
}

void Recorder::recordCall(const QString &operation, const QVariantList &arguments)
{
    QStringList texts;
    for (const QVariant &argument : arguments)
        texts.append(json(argument));
    record(Kind::Call, operation + QLatin1Char('(') + texts.join(QStringLiteral(", ")) + QLatin1Char(')'));
}

void Recorder::recordPost(const QString &name, const QVariantMap &userInfo)
{
    record(Kind::Post, userInfo.isEmpty() ? name : QString(name + QLatin1Char(' ') + json(userInfo)));
}

QStringList Recorder::texts(Kind kind) const
{
    QStringList texts;
    for (const Event &event : mEvents) {
        if (event.kind == kind)
            texts.append(event.text);
    }
    return texts;
}

QStringList Recorder::calls() const
{
    return texts(Kind::Call);
}

QStringList Recorder::posts() const
{
    return texts(Kind::Post);
}

QStringList Recorder::events() const
{
    QStringList texts;
    for (const Event &event : mEvents)
        texts.append(event.text);
    return texts;
}

} // namespace simulator
