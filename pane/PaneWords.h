#pragma once

#include "pane/PaneSentences.h"

struct Outlets;

/// Shows the sentences of the pane's state in the main view's controls.
class PaneWords {
public:
    /// `outlets` must outlive this object. The controls in `outlets` may be set after the construction, but
    /// before the first show().
    explicit PaneWords(const Outlets &outlets);

    /// Shows the sentences of `facts`. Screen readers say the differences from the last shown state.
    void show(const PaneFacts &facts);

private:
    void showList() const;
    void showButtons() const;
    void showPicture() const;
    /// Whether a screen reader says the list's description by itself after the change from `before`. An
    /// announcement would repeat it.
    [[nodiscard]] bool isListRead(const PaneFacts &before) const;

    const Outlets &mOutlets;
    PaneFacts mFacts;
};
