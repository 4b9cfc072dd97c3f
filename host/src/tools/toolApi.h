#pragma once

#include "mel/value.h"

#include <maya/MApiNamespace.h>

#include <functional>
#include <memory>
#include <string>

namespace host {

class Session;
struct ParsedArgs;
struct Syntax;

/// What stands behind an MEvent.
struct Event {
    static constexpr int kLeft = 64, kMiddle = 128; ///< MEvent::MouseButtonType
    static constexpr int kShift = 1, kControl = 4;  ///< bits of `modifiers`

    short x = 0, y = 0; ///< port pixels from the lower left corner
    int button = 0;     ///< 0 for events that have none (motion, tool set-up)
    int modifiers = 0;
};

/// What stands behind an MPxContext.
struct ContextState {
    std::string name;    ///< given by the registry; empty until then
    std::string command; ///< the context command that made it; empty for built-in tools
    std::string images[3];
    std::string help, title;
};

/// What stands behind an MPxSelectionContext: its settings and the press that is going on.
struct SelectionGesture {
    bool softSelect = false, symmetry = false, preselectHilite = false, doubleClickAction = false;
    bool movesNothing = false; ///< a press on what is selected selects, too

    bool pressed = false;
    /// The base class is selecting by this press. Stays until the next one, so that a tool sees in its
    /// release what it saw in its press.
    bool selecting = false;
    short startX = 0, startY = 0, lastX = 0, lastY = 0;
    int modifiers = 0;
};

/// What stands behind an MPxContextCommand, for one call.
struct ContextCommandState {
    std::shared_ptr<Syntax> syntax;
    std::shared_ptr<const ParsedArgs> parsed;
    mel::Value result;
};

/// The door to the tool classes of the interface, for this folder.
struct ToolApi {
    static Event& event(MEvent& event);
    static ContextState& state(const MPxContext& context);
    /// Null when the context is no selection context.
    static SelectionGesture* gesture(MPxContext& context);
    static ContextCommandState& state(const MPxContextCommand& command);
};

} // namespace host
