#include "session.h"
#include "tools/toolApi.h"
#include "types/api.h"
#include "view/viewport.h"

#include <maya/MEvent.h>

using host::Event;

namespace host {

Event& ToolApi::event(MEvent& event)
{
    return *event.event;
}

} // namespace host

MEvent::MEvent() : event(std::make_unique<Event>()) {}

MEvent::~MEvent() = default;

MStatus MEvent::getPosition(short& x_pos, short& y_pos) const
{
    x_pos = event->x;
    y_pos = event->y;
    return MStatus::kSuccess;
}

MStatus MEvent::setPosition(short x_pos, short y_pos)
{
    event->x = x_pos;
    event->y = y_pos;
    return MStatus::kSuccess;
}

MStatus MEvent::getWindowPosition(short& x_pos, short& y_pos) const
{
    host::Session* session = host::Session::currentOrNull();
    if (!session)
        return MStatus::kFailure;
    x_pos = event->x;
    y_pos = static_cast<short>(session->viewport().height - 1 - event->y);
    return MStatus::kSuccess;
}

MEvent::MouseButtonType MEvent::mouseButton(MStatus* status) const
{
    host::report(status, event->button != 0 ? MStatus::kSuccess : MStatus::kFailure);
    return static_cast<MouseButtonType>(event->button);
}

MEvent::ModifierType MEvent::modifiers(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return static_cast<ModifierType>(event->modifiers);
}

MStatus MEvent::setModifiers(const ModifierType& modType)
{
    event->modifiers = modType & (Event::kShift | Event::kControl);
    return MStatus::kSuccess;
}

bool MEvent::isModifierNone(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return event->modifiers == 0;
}

bool MEvent::isModifierShift(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return (event->modifiers & Event::kShift) != 0;
}

bool MEvent::isModifierControl(MStatus* status) const
{
    host::report(status, MStatus::kSuccess);
    return (event->modifiers & Event::kControl) != 0;
}
