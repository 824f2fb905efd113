#include "pane/PaneSentences.h"

#include "cameras/SanitizedLine.h"

namespace {

constexpr int LongestName = 40;

/// Shortens a name for use in a sentence. Counts characters instead of UTF-16 units, so that no surrogate
/// pair is cut.
QString inSentence(const QString &name)
{
    if (name.isEmpty())
        return PaneSentences::tr("(no name)");
    const auto characters = sanitizedLine(name).toUcs4();
    const auto cut = [&characters](int from, int count) {
        return QString::fromUcs4(reinterpret_cast<const char32_t *>(characters.constData()) + from, count);
    };
    const int count = static_cast<int>(characters.size());
    if (count <= LongestName)
        return cut(0, count);
    return cut(0, LongestName / 2) + QChar(0x2026) + cut(count - LongestName / 2, LongestName / 2);
}

/// The names, for use in a sentence, of the cameras in `cameras` whose address is not in `others`.
QStringList namesMissingIn(const QMap<QString, QString> &others, const QMap<QString, QString> &cameras)
{
    QStringList names;
    for (auto camera = cameras.begin(); camera != cameras.end(); ++camera) {
        if (!others.contains(camera.key()))
            names.append(inSentence(camera.value()));
    }
    names.sort();
    return names;
}

/// The accessible text of the selected row.
QString selectedRow(const PaneFacts &facts)
{
    const QString name = inSentence(facts.selectedName);
    return facts.selectedStatus.isEmpty()
        ? name
        : PaneSentences::tr("%1, %2", "camera name, status").arg(name, facts.selectedStatus);
}

/// Whether the listed cameras are the agent's. After a reconnection the list is empty until it is read:
/// compared with such a list, every camera would be new.
bool hasReadCameras(const PaneFacts &facts)
{
    return facts.isListRead && PaneSentences::reason(facts).isEmpty();
}

} // namespace

QString PaneSentences::reason(const PaneFacts &facts)
{
    if (!facts.isConnected)
        return tr("The camera agent is not running or does not answer. Leave this page or close this window, "
                  "and open it again.");
    if (!facts.isOn)
        return tr("KS-7 is switched off.");
    return facts.isBluetoothOff ? tr("Bluetooth is off.") : QString();
}

QString PaneSentences::emptyList(const PaneFacts &facts)
{
    if (QString why = reason(facts); !why.isEmpty())
        return why;
    if (facts.isSearching)
        return tr("Searching for cameras…");
    return facts.isListRead
        ? tr("No cameras found. Choose + to search.")
        : tr("The list of cameras is out of date. Leave this page or close this window, and open it again.");
}

QString PaneSentences::hint(const PaneFacts &facts)
{
    const bool canChoose = reason(facts).isEmpty() && !facts.cameras.isEmpty();
    return canChoose && !facts.hasSelection ? tr("Choose a camera in the list to use it.") : QString();
}

QString PaneSentences::listDescription(const PaneFacts &facts)
{
    if (facts.cameras.isEmpty() || !reason(facts).isEmpty())
        return emptyList(facts);
    const QString how = tr("To choose a camera with the keyboard, open Camera Actions, then Choose Camera.");
    const QString next = hint(facts);
    return next.isEmpty() ? how : next + QLatin1Char(' ') + how;
}

QString PaneSentences::caption(const PaneFacts &facts)
{
    if (!facts.isPreviewing)
        return tr("Preview is off");
    if (!facts.hasPicture)
        return tr("No picture: the first start failed. Restart this application to try again.");
    if (!facts.hasSelection)
        return tr("Waiting for a picture: no camera is chosen");
    const QString name = inSentence(facts.selectedName);
    return facts.isSelectionStreaming
        ? tr("Picture of %1").arg(name)
        : tr("Waiting for the picture of %1: %2", "camera name, status").arg(name, facts.selectedStatus);
}

QString PaneSentences::addButton(const PaneFacts &facts)
{
    if (QString why = reason(facts); !why.isEmpty())
        return why;
    return facts.isPreferredStreaming ? tr("Cameras can be added only while no camera is in use")
                                      : tr("Search for cameras to add");
}

QString PaneSentences::removeButton(const PaneFacts &facts)
{
    if (QString why = reason(facts); !why.isEmpty())
        return why;
    if (!facts.hasSelection)
        return tr("Remove the selected camera: none is selected");
    return facts.isSelectionRemovable ? tr("Remove the selected camera")
                                      : tr("A camera can be removed only while it is not in use");
}

QString PaneSentences::actionsButton(const PaneFacts &facts)
{
    if (!facts.cameras.isEmpty())
        return tr("Camera actions");
    return facts.isConnected ? tr("Camera actions: no camera is listed") : reason(facts);
}

QString PaneSentences::startButton(const PaneFacts &facts)
{
    if (facts.isPreviewing)
        return tr("End the live picture and its sound levels");
    if (QString why = reason(facts); !why.isEmpty())
        return why;
    return facts.hasSelection ? tr("Show the live picture and its sound levels here")
                              : tr("Choose a camera in the list first");
}

QString PaneSentences::notice(const PaneFacts &facts)
{
    return facts.isBluetoothOff ? tr("Bluetooth is off. Turn it on to use your cameras.") : QString();
}

QString PaneSentences::news(const PaneFacts &before, const PaneFacts &now)
{
    if (!now.isShown)
        return {};
    QStringList sentences{paneNews(before, now)};
    if (hasReadCameras(before) && hasReadCameras(now))
        sentences << removalNews(before, now) << discoveryNews(before, now);
    sentences << statusNews(before, now);
    sentences.removeAll(QString());
    return sentences.join(QLatin1Char('\n'));
}

QString PaneSentences::statusNews(const PaneFacts &before, const PaneFacts &now)
{
    const bool isSameCamera =
        before.hasSelection && now.hasSelection && before.selectedAddress == now.selectedAddress;
    const bool isNew = isSameCamera && before.selectedStatus != now.selectedStatus;
    if (!isNew || !now.isSelectionSettled || now.isListFocused || !reason(now).isEmpty())
        return {};
    return selectedRow(now);
}

QString PaneSentences::paneNews(const PaneFacts &before, const PaneFacts &now)
{
    if (before.isConnected && !now.isConnected)
        return reason(now);
    if (before.isPreviewing != now.isPreviewing)
        return caption(now);
    if (!before.isSearching && now.isSearching)
        return tr("Searching for cameras…");
    if (before.isSearching && !now.isSearching)
        return now.cameras.isEmpty() ? emptyList(now) : tr("The search has ended.");
    return {};
}

QString PaneSentences::removalNews(const PaneFacts &before, const PaneFacts &now)
{
    const QStringList removed = namesMissingIn(now.cameras, before.cameras);
    if (removed.isEmpty())
        return {};
    const QString names = removed.join(QStringLiteral(", "));
    const bool isChoiceRemoved = before.hasSelection && !now.cameras.contains(before.selectedAddress);
    if (!isChoiceRemoved || !now.hasSelection || now.isListFocused)
        return tr("Removed from the list: %1").arg(names);
    return tr("Removed from the list: %1. Now chosen: %2", "camera names, camera name and status")
        .arg(names, selectedRow(now));
}

QString PaneSentences::discoveryNews(const PaneFacts &before, const PaneFacts &now)
{
    const QStringList found = namesMissingIn(before.cameras, now.cameras);
    if (found.isEmpty())
        return {};
    const QString names = found.join(QStringLiteral(", "));
    return found.size() == 1 ? tr("New camera: %1").arg(names) : tr("New cameras: %1").arg(names);
}
