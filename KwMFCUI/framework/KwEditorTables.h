#pragma once
// The rows an entity editor declares instead of writing its plumbing: which logic field each
// control shows (value bindings) and what each entity type shows (type panels). The editor
// base applies both whenever the logic has (re)loaded its edit copy.
#include <array>

// How a bound control shows a field of the logic's value interface.
enum class KwBind : unsigned char {
    ComboIndex, // combo box row = value
    TypeCombo,  // combo box row <-> type code through the logic's type mapping; a change runs
                // the editor base's type change
    Check,      // check box or checkable button: 1 checked, 0 clear
    Slider,     // slider position = value
    Color,      // colour swatch, value 0x00BBGGRR; a click opens the colour chooser
    RadioGroup, // `count` radio buttons with consecutive ids from ctrlId: value = offset
};

// One control bound to one field of the logic's value interface.
struct KwValueBinding
{
    int field;
    int ctrlId;
    KwBind kind;
    int count = 0; // radio groups: how many buttons
};

// What a type panel row asks of the base beyond showing its controls.
namespace KwPanelFlag {
enum : unsigned {
    HideCoordSystems = 0x1, // hide all coordinate systems in the view
    Refill = 0x2,           // refill the bound controls (the panel shows stored values afresh)
};
}

// A prompt as a language triple (section, key, English default).
struct KwPrompt
{
    const char* section = nullptr;
    const char* key = nullptr;
    const char* english = nullptr;
};

// What one entity type shows: its panel controls (the others of the table are hidden), the
// selection filter of the editor's primary selection box and its prompt, each with a variant
// for an explicit analysis (a zero filter or empty prompt: the same as outside one).
struct KwTypePanel
{
    int type;
    std::array<int, 4> panels;
    unsigned filter;
    unsigned explicitFilter;
    KwPrompt prompt;
    KwPrompt explicitPrompt;
    unsigned flags = 0;
};
