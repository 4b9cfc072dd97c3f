#pragma once

#include "common.h"
#include "weightModes/editRecord.h"
#include "weightModes/weightStore.h"

#include <maya/MEvent.h>
#include <maya/MFrameContext.h>
#include <maya/MGlobal.h>
#include <maya/MMessage.h>
#include <maya/MPoint.h>
#include <maya/MPxSelectionContext.h>
#include <maya/MRichSelection.h>
#include <maya/MString.h>
#include <maya/MUIDrawManager.h>
#include <maya/MVector.h>
#include <memory>
#include <vector>

class morvaneToolCommand;

/// Directions and motions below this are none, in pixels (per unit of weight).
constexpr double kNoLength = 0.01;

/// Says that a component of another kind cannot be sculpted.
MString verticesWanted(const MDagPath& path, const MObject& component);

/// The interactive tool: it sculpts weights by dragging vertices. The context command makes one per tool
/// instance; the platform owns it and sends it the events of the mouse while the tool is current, one at a
/// time, on the main thread.
///
/// It holds the user's settings, which last as long as the tool, the working data of the current press (the
/// record, a base class because the tool command keeps the same one), and the copied weights. Every operation
/// that the platform calls catches what is thrown below it.
class morvaneContext : public MPxSelectionContext, private EditRecord, private CopyBuffer {
public:
    morvaneContext();
    ~morvaneContext() override;

    // Life of the tool (lifecycle.cpp).
    void toolOnSetup(MEvent& event) override;
    void toolOffCleanup() override;
    /// "morvane", from which the platform makes the names of the settings procedures.
    void getClassName(MString& name) const override;
    /// Rebuilds the label of what is sculpted and, while the display is visible, shows it.
    void setHudDisplayString();
    /// Removes the callback that cleans up when the platform exits; called when the plug-in is unloaded.
    static void removeMayaClosedCallback();
    /// While the plug-in is being unloaded a stroke under way is not recorded: the code behind its undo step
    /// would be gone.
    static void setUnloading(bool unloading) { pluginUnloading = unloading; }

    // Mouse events (events.cpp, selecting.cpp).
    using MPxSelectionContext::doDrag;
    using MPxSelectionContext::doPress;
    using MPxSelectionContext::doRelease;
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                    const MHWRender::MFrameContext& context) override;
    MStatus doRelease(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                      const MHWRender::MFrameContext& context) override;
    MStatus doDrag(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                   const MHWRender::MFrameContext& context) override;
    MStatus doPtrMoved(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                       const MHWRender::MFrameContext& context) override;
    MStatus doPtrMoved(MEvent& event) override;
    /// Finds what a press hit and decides between sculpting and selecting; selects an unselected vertex
    /// first.
    virtual MStatus processClick(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                                 const MHWRender::MFrameContext& context);

    // Settings (settings.cpp). Plain setters store what they get. Those with a status keep the old value when
    // it fails.
    MStatus setDeformerStr(MString name);
    MStatus setWeightsPlugStr(MString name);
    MStatus setTargetString(MString name);
    void setWeightMode(WeightMode mode);
    void setSkinInfluenceStr(MString name);
    void setNgLayerString(MString name);
    void setTargetIndex(int index);
    void setClampedMin(bool value) { clampedMin = value; }
    void setClampedMax(bool value) { clampedMax = value; }
    void setWeightMin(double value) { weightMin = value; }
    void setWeightMax(double value) { weightMax = value; }
    void setDisplayPrecision(int value) { displayPrecision = value; }
    void setFontSize(int value) { fontSize = value; }
    void setFontOpacity(float value) { fontOpacity = value; }
    void setFontColorR(float value) { fontColorR = value; }
    void setFontColorG(float value) { fontColorG = value; }
    void setFontColorB(float value) { fontColorB = value; }
    void setDisplayWeights(bool value) { displayWeights = value; }
    void setDistributeWeightsNg(bool value) { distributeWeightsNg = value; }
    void setPastePerVertex(bool value) { pastePerVertex = value; }
    void setSkinInfluence(MDagPath path) { chooseInfluence(path); }
    MString getDeformerStr() const { return deformerStr; }
    bool getClampedMin() const { return clampedMin; }
    bool getClampedMax() const { return clampedMax; }
    double getWeightMin() const { return weightMin; }
    double getWeightMax() const { return weightMax; }
    int getDisplayPrecision() const { return displayPrecision; }
    MString getTargetString() const { return targetString; }
    bool getDisplayWeights() const { return displayWeights; }
    int getFontSize() const { return fontSize; }
    float getFontOpacity() const { return fontOpacity; }
    float getFontColorR() const { return fontColorR; }
    float getFontColorG() const { return fontColorG; }
    float getFontColorB() const { return fontColorB; }
    WeightMode getWeightMode() const { return weightMode; }
    MString getWeightsPlugStr() const { return weightsPlugStr; }
    MDagPath getSkinInfluence() const { return liveInfluence(); }
    MString getNgLayerString() const { return ngLayerString; }
    bool getDistributeWeightsNg() const { return distributeWeightsNg; }
    bool getPastePerVertex() const { return pastePerVertex; }

    // Targets (targets.cpp).
    /// Resolves the deformer's name; null on failure. Modes that need none succeed at once.
    MStatus checkActiveDeformer(MString deformerName);
    /// Resolves a weights attribute of the deformer; null on failure.
    MStatus checkWeightsPlug(MString plugName);
    /// Turns the scene's selection into edited objects, appended to the outputs: first the selection itself,
    /// then its symmetric half. Left empty when the mode cannot edit; people are told where they can do
    /// something about it.
    void getValidActiveSel(MSelectionList& validSel, std::vector<MFloatArray>& softSelectWeights,
                           MObjectArray& validSkinClusters);

    // Copy and paste (copyPaste.cpp).
    MStatus copyWeights();
    /// A failed status when nothing was copied or nothing is selected; success also after a warning.
    MStatus pasteWeights();

private:
    enum ContextMode { kSculptMode = 0, kSelectMode = 1 };

    // lifecycle.cpp
    void setupCustomHotkeys();
    void cleanupCustomHotkeys();
    void setUpHUD();
    void cleanupHUD();
    void createMayaClosedCallback();
    static void mayaClosedFunc(void* clientData);

    // events.cpp
    MStatus pressed(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                    const MHWRender::MFrameContext& context);
    MStatus dragged(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                    const MHWRender::MFrameContext& context);
    MStatus released(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                     const MHWRender::MFrameContext& context);
    /// Records the stroke of this press. Labels are cleared when there is something to draw on.
    MStatus releaseSculpt(MHWRender::MUIDrawManager* drawManager);
    /// Reads the weights under a press that has hit a point and measures the direction; what keeps a drag
    /// from changing anything is noted.
    void startStroke();
    /// Records the stroke under way, if there is one, before something else changes what it works on: a
    /// paste, another target, another tool. The rest of the drag then does nothing.
    void endStroke();
    void clearData();
    void clearColumns();
    MStatus getContextMode(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                           const MHWRender::MFrameContext& context);
    morvaneToolCommand* makeToolCommand();
    /// Hands the command over to the undo queue; it stays the tool's when that fails.
    MStatus finalizeCommand();
    /// Nothing is recorded: the command of the press lets go of what it holds.
    void discardCommand();

    // recovery.cpp: after an event that has thrown, the scene is as the last complete one left it.
    void takeBackPress();
    void takeBackDrag();
    void takeBackRelease();
    void restorePressSelection();

    // selecting.cpp
    /// Notes the selection of the press and what lies under the cursor; false when there is no selection to
    /// read.
    bool pickAtPress();
    /// Notes why a press on a component that no stroke can start from will not sculpt.
    void explainPick(const MString& reason);
    void gatherPickList();
    void doDragSelect(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                      const MHWRender::MFrameContext& context);
    MStatus doReleaseSelect();
    void recordSelection();

    // picking.cpp
    /// Whether the first candidate shares an element with the first item on the same shape of the selection;
    /// sets clickHit and, on a hit, clickDagPath and clickComponent. The pixel is not used.
    void getClickInfo(short x, short y, MSelectionList selection, MSelectionList candidates);

    // direction.cpp
    /// Measures how the clicked vertex moves on screen when its weight rises; the weight is put back.
    MStatus getDirectionVector();
    /// Turns the drag so far into a weight offset; fails, with offset 0, when there is no direction or no
    /// motion.
    MStatus getDirectionScalar();
    MStatus probeClickedVertex(MPoint& low, MPoint& high);

    // stroke.cpp
    MStatus doDragSculpt(MEvent& event, MHWRender::MUIDrawManager& drawManager,
                         const MHWRender::MFrameContext& context);
    void prepareStroke();
    void dropLostObjects();
    void restorePressWeights();
    void settleStroke();
    void sayThatWriteFailed(unsigned int index);

    // targets.cpp
    void getMembers();
    /// The deformer that bears the tool's name for it now, whatever the mode; null when there is none.
    void resolveStoredDeformer();
    TargetNames targetNames() const;
    /// What undo entries say of a stroke or a paste.
    MString describeEdit(const char* operation) const;

    // reasons.cpp
    void showHelp();
    void startExplaining();
    void warn(const MString& reason);
    void putIntoHelpLine(const MString& reason);
    /// Says what this press has noted, unless it has said something already.
    void sayWhy();
    void sayWhyUnlessSelected();
    void warnOfWrongComponents();
    MString whyNoDeformer() const;
    MString whyNothingToEdit() const;
    MString whyNoMember() const;
    MString whatHinders() const;
    MString obstacle(bool moves) const;

    // selection.cpp
    bool holdsPoints(const EditedObject& selected);
    void analyzeSel(MSelectionList sel, MSelectionList& validSel,
                    std::vector<MFloatArray>& softSelectWeights);
    void analyzeSelSkin(MSelectionList sel, MSelectionList& validSel,
                        std::vector<MFloatArray>& softSelectWeights, MObjectArray& validSkinClusters);

    // weights.cpp
    /// Reads the weights of every object of `sel` into the stores, by mode; see WeightReading for their
    /// layouts.
    MStatus getWeights(MSelectionList& sel, std::vector<SkinRowsRef>& skinRows,
                       std::vector<MDoubleArray>& influenceWeights, std::vector<MDoubleArray>& blendWeights,
                       std::vector<MFloatArray>& weights, MObjectArray& skinClusters,
                       MIntArray& influenceCounts, MIntArray& influenceIds, MIntArray& ngInfluenceIds,
                       std::vector<MDoubleArray>& ngWeights,
                       std::vector<std::vector<MDoubleArray>>& allInfluenceNgWeights);
    MStatus getOldWeights();

    // copyPaste.cpp
    MStatus fillCopyBuffer();
    MStatus passToToolCommand(morvaneToolCommand* command);
    void emptyCopyBuffer();
    PasteVerdict fillPasteArrays(PasteRecord& pasted);

    static MCallbackId mayaClosedCallback;
    static bool pluginUnloading;

    /// What is known of a press that may change nothing.
    struct Explaining {
        bool said = false;         ///< people have been told
        bool reported = false;     ///< and the error stream, too
        MString pending;           ///< what to tell them
        MString unresolved;        ///< the mode cannot edit now
        bool editsMembers = false; ///< the mode edits what the deformer deforms
        MString skipped;           ///< why the clicked object is left out
        MString wrongComponents;   ///< part of the selection is no points
        Reason unread;             ///< the weights cannot be read
        bool probed = false;       ///< the clicked weight could be nudged
    };

    // Settings, beside those in the record; defaults are in the constructor's table of settings.cpp.
    int displayPrecision = 2; ///< decimals of the labels
    bool displayWeights = true;
    int fontSize = 12;
    float fontOpacity = 1.0F;
    float fontColorR = 1.0F;
    float fontColorG = 1.0F;
    float fontColorB = 1.0F;
    MString deformerStr;
    MString weightsPlugStr;
    MString skinInfluenceStr;
    MString targetString;
    MString ngLayerString;
    bool pastePerVertex = false; ///< a paste gives every point just what its match had

    // The current press. Positions are port pixels, origin lower left, in sixteen bits as events give them.
    double directionStep = 0.005; ///< half the probe's span, weight units
    bool shiftHeld = false;
    bool controlHeld = false;
    short pressX = 0, pressY = 0;
    short releaseX = 0, releaseY = 0;
    MPoint pressPoint;
    MPoint dragPoint;
    MGlobal::ListAdjustment listAdjustment = MGlobal::kAddToList;
    morvaneToolCommand* toolCommand = nullptr; ///< made at press; not owned, null once it is handed over
    int contextMode = kSelectMode;
    bool mouseDown = false;
    MIntArray oldIndexArray; ///< per object, its number of influences
    MVector directionVector; ///< pixels per unit of weight
    bool clickHit = false;
    MDagPath clickDagPath;
    MObject clickComponent; ///< one point
    MSelectionList deformerMembers;
    MSelectionList pickList;
    MSelectionList pressSelection;
    MRichSelection richSel; ///< always empty; never assigned
    bool selectionChanged = false;
    std::vector<std::unique_ptr<LiveObject>> liveObjects; ///< per object of validSel; null for a refused one
    bool strokeWritten = false;                           ///< a drag of this press has written weights
    double completeOffset = 0.0;                          ///< of the last drag event that was completed
    bool dragCompleted = false;                           ///< and whether there was one that wrote
    bool pressSelectionKnown = false;                     ///< pressSelection is what was selected

    Explaining explaining;
    bool helpShowsReason = false;
    bool isCurrent = false; ///< the tool in hand

    bool weightsCopied = false;    ///< a plain record: a copy exists and the mode has not changed since
    bool callBaseHandlers = false; ///< the base class's selection handling runs too; nothing sets it
    bool ngEnabled = false;

    int clickDragPref = 0; ///< the user's preference, restored when the tool is left
    MString previousHotkeySet;
    MString tempHotkeySet;
    MString hudDisplayString; ///< what follows "Sculpting On:"
};
