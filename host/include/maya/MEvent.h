#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
struct Api;
struct ToolApi;
struct Event;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

/// One event of the mouse in a view. Positions are port pixels from the lower left corner; window positions
/// count from the top.
class MAYA_HOST_EXPORT MEvent {
public:
    enum ModifierType : int {
        shiftKey = 1,
        controlKey = 4,
    };

    enum MouseButtonType : int {
        kLeftMouse = 64,
        kMiddleMouse = 128,
    };

    MEvent();
    MEvent(const MEvent&) = delete;
    MEvent& operator=(const MEvent&) = delete;
    virtual ~MEvent();

    MStatus getPosition(short& x_pos, short& y_pos) const;
    MStatus setPosition(short x_pos, short y_pos);
    MStatus getWindowPosition(short& x_pos, short& y_pos) const;
    /// Only press, drag and release know a button.
    MouseButtonType mouseButton(MStatus* status = nullptr) const;
    ModifierType modifiers(MStatus* status = nullptr) const;
    MStatus setModifiers(const ModifierType& modType);
    bool isModifierNone(MStatus* status = nullptr) const;
    bool isModifierShift(MStatus* status = nullptr) const;
    bool isModifierControl(MStatus* status = nullptr) const;
    static const char* className() { return "MEvent"; }

private:
    friend struct host::Api;
    friend struct host::ToolApi;
    std::unique_ptr<host::Event> event;
};

MAYA_HOST_NAMESPACE_CLOSE
