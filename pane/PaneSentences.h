#pragma once

#include <QCoreApplication>
#include <QMap>

/// The state of the pane from which PaneSentences makes its texts.
struct PaneFacts {
    /// False while the pane is hidden or another user's session is on the screen. There is then no news.
    bool isShown = true;
    bool isConnected = false;
    /// Whether the list of cameras was read since the pane connected.
    bool isListRead = true;
    bool isOn = true;
    bool isBluetoothOff = false;
    bool isSearching = false;
    bool isPreviewing = false;
    /// False if the preview runs without a camera, because its first start failed.
    bool hasPicture = true;
    /// Whether the camera that the agent prefers is streaming.
    bool isPreferredStreaming = false;
    bool isSelectionRemovable = false;
    bool isSelectionStreaming = false;
    /// False while the selected camera pairs or starts. Such a status soon changes again.
    bool isSelectionSettled = true;
    /// Whether the list has the focus. Screen readers then say a new status of the selected row by
    /// themselves.
    bool isListFocused = false;
    /// The names of all listed cameras by address. A name is no key: it changes, and cameras may share it.
    QMap<QString, QString> cameras;
    bool hasSelection = false;
    /// Address, name and status of the selected camera.
    QString selectedAddress;
    QString selectedName;
    QString selectedStatus;
};

/// Makes the sentences that describe the pane's state to the user. A function returns an empty text when
/// there is nothing to say.
class PaneSentences {
    Q_DECLARE_TR_FUNCTIONS(PaneSentences)
public:
    /// The reason why no camera can be used; empty if cameras can be used.
    static QString reason(const PaneFacts &facts);
    /// The text that an empty camera list shows instead of rows.
    static QString emptyList(const PaneFacts &facts);
    /// The text under the list that tells the user what to do next.
    static QString hint(const PaneFacts &facts);
    static QString listDescription(const PaneFacts &facts);
    static QString caption(const PaneFacts &facts);
    static QString addButton(const PaneFacts &facts);
    static QString removeButton(const PaneFacts &facts);
    static QString actionsButton(const PaneFacts &facts);
    static QString startButton(const PaneFacts &facts);
    /// The text of the strip at the top of the pane. The strip is shown while this text is not empty.
    static QString notice(const PaneFacts &facts);
    /// The text that a screen reader announces when the state changes from `before` to `now`.
    static QString news(const PaneFacts &before, const PaneFacts &now);

private:
    static QString paneNews(const PaneFacts &before, const PaneFacts &now);
    /// Announcement of the cameras that were removed, with the camera that is chosen in their place.
    static QString removalNews(const PaneFacts &before, const PaneFacts &now);
    /// Announcement of the cameras that were found.
    static QString discoveryNews(const PaneFacts &before, const PaneFacts &now);
    /// Announcement of the selected camera's new status. Empty for a status that soon changes again: a start
    /// would be announced twice.
    static QString statusNews(const PaneFacts &before, const PaneFacts &now);
};
