#pragma once

class Skin;

// A window that can be dressed in a skin. The skin gathers what is wrong with its files; the window
// is usable whatever happens.
class SkinnedWindow {
  public:
    virtual ~SkinnedWindow() = default;

    // Takes size, outline and background from the skin's picture for this window.
    virtual void LoadBackground(Skin& skin) = 0;
    // Places the controls as the layout file says and loads their pictures; after LoadBackground.
    virtual void ApplyLayout(Skin& skin) = 0;
};
