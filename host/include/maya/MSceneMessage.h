#pragma once

#include <maya/MMessage.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// Callbacks about the session and its files.
class MAYA_HOST_EXPORT MSceneMessage : public MMessage {
public:
    enum Message : int {
        kSceneUpdate = 0,
        kBeforeNew = 1,
        kAfterNew = 2,
        kBeforeImport = 3,
        kAfterImport = 4,
        kBeforeOpen = 5,
        kAfterOpen = 6,
        kBeforeFileRead = 7,
        kAfterFileRead = 8,
        kAfterSceneReadAndRecordEdits = 9,
        kBeforeExport = 10,
        kAfterExport = 11,
        kBeforeSave = 12,
        kAfterSave = 13,
        kBeforeReference = 14,
        kAfterReference = 15,
        kBeforeRemoveReference = 16,
        kAfterRemoveReference = 17,
        kBeforeImportReference = 18,
        kAfterImportReference = 19,
        kBeforeExportReference = 20,
        kAfterExportReference = 21,
        kBeforeUnloadReference = 22,
        kAfterUnloadReference = 23,
        kBeforeSoftwareRender = 24,
        kAfterSoftwareRender = 25,
        kBeforeSoftwareFrameRender = 26,
        kAfterSoftwareFrameRender = 27,
        kSoftwareRenderInterrupted = 28,
        kMayaInitialized = 29,
        kMayaExiting = 30,
        kBeforeNewCheck = 31,
        kBeforeOpenCheck = 32,
        kBeforeSaveCheck = 33,
        kBeforeImportCheck = 34,
        kBeforeExportCheck = 35,
        kBeforeLoadReference = 36,
        kAfterLoadReference = 37,
        kBeforeLoadReferenceCheck = 38,
        kBeforeReferenceCheck = 39,
        kBeforeCreateReferenceCheck = 39,
        kBeforePluginLoad = 40,
        kAfterPluginLoad = 41,
        kBeforePluginUnload = 42,
        kAfterPluginUnload = 43,
        kBeforeCreateReference = 44,
        kAfterCreateReference = 45,
        kExportStarted = 46,
        kBeforeLoadReferenceAndRecordEdits = 47,
        kAfterLoadReferenceAndRecordEdits = 48,
        kBeforeCreateReferenceAndRecordEdits = 49,
        kAfterCreateReferenceAndRecordEdits = 50,
        kLast = 51,
    };

    /// Called in the order in which they were added. 0 and kFailure when the function is null.
    static MCallbackId addCallback(Message msg, MMessage::MBasicFunction func, void* clientData = nullptr,
                                   MStatus* status = nullptr);
    static const char* className() { return "MSceneMessage"; }

private:
    friend struct host::Api;
};

MAYA_HOST_NAMESPACE_CLOSE
