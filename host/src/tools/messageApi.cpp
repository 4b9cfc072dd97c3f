#include "session.h"
#include "tools/sceneCallbacks.h"
#include "tools/tools.h"
#include "types/api.h"

#include <maya/MSceneMessage.h>

MStatus MMessage::removeCallback(MCallbackId id)
{
    host::Session* session = host::Session::currentOrNull();
    if (!session || !session->tools().callbacks().remove(id))
        return MStatus::kFailure;
    return MStatus::kSuccess;
}

MCallbackId MSceneMessage::addCallback(Message msg, MMessage::MBasicFunction func, void* clientData,
                                       MStatus* status)
{
    host::Session* session = host::Session::currentOrNull();
    const bool known = msg >= kSceneUpdate && msg < kLast;
    if (!session || !func || !known) {
        host::report(status, session && !known ? MStatus::kInvalidParameter : MStatus::kFailure);
        return 0;
    }
    host::report(status, MStatus::kSuccess);
    return session->tools().callbacks().add(msg, func, clientData);
}
