#pragma once

#include <QCoreApplication>
#include <QStringList>

/// What the pane knows when it says in words why something is as it is.
struct PaneFacts {
    bool isConnected = false;
    bool isOn = true;
    bool isBluetoothOff = false;
    bool isSearching = false;
    bool isPreviewing = false;
    /// False while a preview runs without a camera, as it does after a first start that failed.
    bool hasPicture = true;
    /// The agent's preferred camera streams.
    bool isPreferredStreaming = false;
    bool isSelectionRemovable = false;
    bool isSelectionStreaming = false;
    /// The listed cameras' names, in any order.
    QStringList cameras;
    /// Name and status of the selected camera; null without one.
    QString selectedName;
    QString selectedStatus;
};

/// Maps the pane's state to the sentences that a person reads or hears. Empty where there is nothing to say.
class PaneSentences {
    Q_DECLARE_TR_FUNCTIONS(PaneSentences)
public:
    /// Why no camera can be used at all.
    static QString reason(const PaneFacts &facts);
    /// In the place of the rows while there are none.
    static QString emptyList(const PaneFacts &facts);
    /// What to do next, under the list.
    static QString hint(const PaneFacts &facts);
    static QString listDescription(const PaneFacts &facts);
    static QString caption(const PaneFacts &facts);
    static QString addButton(const PaneFacts &facts);
    static QString removeButton(const PaneFacts &facts);
    static QString actionsButton(const PaneFacts &facts);
    static QString startButton(const PaneFacts &facts);
    /// The strip at the top, which stays as long as its reason.
    static QString notice(const PaneFacts &facts);
    /// What a screen reader says by itself when `before` has become `now`.
    static QString news(const PaneFacts &before, const PaneFacts &now);
};
