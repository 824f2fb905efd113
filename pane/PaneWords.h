#pragma once

#include "pane/PaneSentences.h"

class KS7AnimatingStatusTableView;
class KS7QTCaptureView;
class NoticeStrip;
class QAbstractButton;
class QLabel;

/// The places in the main view where the pane's state is put into words.
class PaneWords {
public:
    NoticeStrip *notice = nullptr;
    KS7AnimatingStatusTableView *list = nullptr;
    QLabel *hint = nullptr;
    QAbstractButton *addButton = nullptr;
    QAbstractButton *removeButton = nullptr;
    QAbstractButton *actionsButton = nullptr;
    QAbstractButton *startButton = nullptr;
    KS7QTCaptureView *picture = nullptr;
    QLabel *caption = nullptr;

    /// Shows the sentences of that state and has screen readers say what is new in it.
    void show(const PaneFacts &facts);

private:
    void showList() const;
    void showButtons() const;
    void showPicture() const;

    PaneFacts mFacts;
};
