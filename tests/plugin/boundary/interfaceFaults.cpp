// Functions of the interface in front of the host's own: each fails when it is its turn, and is the host's
// otherwise. The loader finds them first, since they are in the program.
#include "plugin/boundary/faults.h"

#include <maya/M3dView.h>
#include <maya/MCommandResult.h>
#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MDoubleArray.h>
#include <maya/MEvent.h>
#include <maya/MFloatArray.h>
#include <maya/MFnAttribute.h>
#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnSet.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MGlobal.h>
#include <maya/MIntArray.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MItGeometry.h>
#include <maya/MMatrix.h>
#include <maya/MObjectArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPoint.h>
#include <maya/MPxToolCommand.h>
#include <maya/MRichSelection.h>
#include <maya/MSelectionList.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MWeight.h>

using testing_support::interfaceCallFails;
using testing_support::realFunction;

namespace {

/// What a failing call answers beside its status.
template <class Answer>
Answer failing(MStatus* status)
{
    if (status)
        *status = MStatus::kFailure;
    return Answer();
}

} // namespace

#ifdef __clang__
// A member function is called here through the plain function that the loader knows it as.
#define UNCHECKED __attribute__((no_sanitize("function")))
#else
#define UNCHECKED
#endif

#define REAL(type) static const auto real = reinterpret_cast<type>(realFunction())
#define FAILS interfaceCallFails(__builtin_return_address(0))

// NAME of CLASS, which answers with its status.
#define STATUS0(cls, name, quals)                                                                            \
    UNCHECKED MStatus cls::name() quals                                                                      \
    {                                                                                                        \
        REAL(MStatus (*)(const void*));                                                                      \
        return FAILS ? MStatus(MStatus::kFailure) : real(this);                                              \
    }
#define STATUS1(cls, name, quals, A)                                                                         \
    UNCHECKED MStatus cls::name(A a) quals                                                                   \
    {                                                                                                        \
        REAL(MStatus (*)(const void*, A));                                                                   \
        return FAILS ? MStatus(MStatus::kFailure) : real(this, a);                                           \
    }
#define STATUS2(cls, name, quals, A, B)                                                                      \
    UNCHECKED MStatus cls::name(A a, B b) quals                                                              \
    {                                                                                                        \
        REAL(MStatus (*)(const void*, A, B));                                                                \
        return FAILS ? MStatus(MStatus::kFailure) : real(this, a, b);                                        \
    }
#define STATUS3(cls, name, quals, A, B, C)                                                                   \
    UNCHECKED MStatus cls::name(A a, B b, C c) quals                                                         \
    {                                                                                                        \
        REAL(MStatus (*)(const void*, A, B, C));                                                             \
        return FAILS ? MStatus(MStatus::kFailure) : real(this, a, b, c);                                     \
    }
#define STATUS4(cls, name, quals, A, B, C, D)                                                                \
    UNCHECKED MStatus cls::name(A a, B b, C c, D d) quals                                                    \
    {                                                                                                        \
        REAL(MStatus (*)(const void*, A, B, C, D));                                                          \
        return FAILS ? MStatus(MStatus::kFailure) : real(this, a, b, c, d);                                  \
    }
#define STATUS6(cls, name, quals, A, B, C, D, E, F)                                                          \
    UNCHECKED MStatus cls::name(A a, B b, C c, D d, E e, F f) quals                                          \
    {                                                                                                        \
        REAL(MStatus (*)(const void*, A, B, C, D, E, F));                                                    \
        return FAILS ? MStatus(MStatus::kFailure) : real(this, a, b, c, d, e, f);                            \
    }
// The same for functions that belong to no object.
#define STATIC1(cls, name, A)                                                                                \
    UNCHECKED MStatus cls::name(A a)                                                                         \
    {                                                                                                        \
        REAL(MStatus (*)(A));                                                                                \
        return FAILS ? MStatus(MStatus::kFailure) : real(a);                                                 \
    }
#define STATIC2(cls, name, A, B)                                                                             \
    UNCHECKED MStatus cls::name(A a, B b)                                                                    \
    {                                                                                                        \
        REAL(MStatus (*)(A, B));                                                                             \
        return FAILS ? MStatus(MStatus::kFailure) : real(a, b);                                              \
    }
#define STATIC3(cls, name, A, B, C)                                                                          \
    UNCHECKED MStatus cls::name(A a, B b, C c)                                                               \
    {                                                                                                        \
        REAL(MStatus (*)(A, B, C));                                                                          \
        return FAILS ? MStatus(MStatus::kFailure) : real(a, b, c);                                           \
    }
#define STATIC4(cls, name, A, B, C, D)                                                                       \
    UNCHECKED MStatus cls::name(A a, B b, C c, D d)                                                          \
    {                                                                                                        \
        REAL(MStatus (*)(A, B, C, D));                                                                       \
        return FAILS ? MStatus(MStatus::kFailure) : real(a, b, c, d);                                        \
    }
#define STATIC6(cls, name, A, B, C, D, E, F)                                                                 \
    UNCHECKED MStatus cls::name(A a, B b, C c, D d, E e, F f)                                                \
    {                                                                                                        \
        REAL(MStatus (*)(A, B, C, D, E, F));                                                                 \
        return FAILS ? MStatus(MStatus::kFailure) : real(a, b, c, d, e, f);                                  \
    }
// NAME of CLASS, which gives its status out beside its answer.
#define ANSWER0(answer, cls, name, quals)                                                                    \
    UNCHECKED answer cls::name(MStatus* status) quals                                                        \
    {                                                                                                        \
        REAL(answer (*)(const void*, MStatus*));                                                             \
        return FAILS ? failing<answer>(status) : real(this, status);                                         \
    }
#define ANSWER1(answer, cls, name, quals, A)                                                                 \
    UNCHECKED answer cls::name(A a, MStatus* status) quals                                                   \
    {                                                                                                        \
        REAL(answer (*)(const void*, A, MStatus*));                                                          \
        return FAILS ? failing<answer>(status) : real(this, a, status);                                      \
    }
#define ANSWER2(answer, cls, name, quals, A, B)                                                              \
    UNCHECKED answer cls::name(A a, B b, MStatus* status) quals                                              \
    {                                                                                                        \
        REAL(answer (*)(const void*, A, B, MStatus*));                                                       \
        return FAILS ? failing<answer>(status) : real(this, a, b, status);                                   \
    }
#define ANSWER3(answer, cls, name, quals, A, B, C)                                                           \
    UNCHECKED answer cls::name(A a, B b, C c, MStatus* status) quals                                         \
    {                                                                                                        \
        REAL(answer (*)(const void*, A, B, C, MStatus*));                                                    \
        return FAILS ? failing<answer>(status) : real(this, a, b, c, status);                                \
    }
// A function set that is attached to nothing.
#define ATTACHED(cls)                                                                                        \
    cls::cls(const MObject& object, MStatus* status)                                                         \
    {                                                                                                        \
        const MStatus attached = FAILS ? MStatus(MStatus::kFailure) : setObject(object);                     \
        if (status)                                                                                          \
            *status = attached;                                                                              \
    }

STATUS3(MFnSkinCluster, getBlendWeights, const, const MDagPath&, const MObject&, MDoubleArray&)
STATUS3(MFnSkinCluster, setBlendWeights, , const MDagPath&, const MObject&, const MDoubleArray&)
STATUS4(MFnSkinCluster, getWeights, const, const MDagPath&, const MObject&, MDoubleArray&, unsigned int&)
STATUS4(MFnSkinCluster, getWeights, const, const MDagPath&, const MObject&, MIntArray&, MDoubleArray&)
STATUS6(MFnSkinCluster, setWeights, , const MDagPath&, const MObject&, MIntArray&, MDoubleArray&, bool,
        MDoubleArray*)
STATUS6(MFnSkinCluster, setWeights, , const MDagPath&, const MObject&, MIntArray&, MFloatArray&, bool,
        MFloatArray*)
ANSWER1(unsigned int, MFnSkinCluster, influenceObjects, const, MDagPathArray&)
ANSWER1(unsigned int, MFnSkinCluster, indexForInfluenceObject, const, const MDagPath&)
STATUS3(MFnWeightGeometryFilter, getWeights, const, const MDagPath&, const MObject&, MFloatArray&)
STATUS3(MFnWeightGeometryFilter, setWeight, , const MDagPath&, const MObject&, MFloatArray&)
STATUS1(MFnGeometryFilter, getOutputGeometry, const, MObjectArray&)
ANSWER0(MObject, MFnGeometryFilter, deformerSet, const)
ANSWER1(MObject, MFnGeometryFilter, getComponentAtIndex, , unsigned int)
ANSWER1(MObject, MFnGeometryFilter, inputShapeAtIndex, const, unsigned int)
ANSWER1(unsigned int, MFnGeometryFilter, indexForOutputShape, const, const MObject&)
ANSWER2(MPlug, MFnDependencyNode, findPlug, const, const MString&, bool)
ANSWER1(bool, MFnDependencyNode, getAliasList, , MStringArray&)
ANSWER0(MString, MFnDependencyNode, typeName, const)
ANSWER0(MObject, MFnAttribute, parent, const)
ANSWER0(int, MFnComponent, elementCount, const)
ANSWER1(MWeight, MFnComponent, weight, const, int)
STATUS2(MFnSet, getMembers, const, MSelectionList&, bool)
ANSWER1(MObject, MFnSingleIndexedComponent, create, , MFn::Type)
STATUS1(MFnSingleIndexedComponent, addElement, , int)
STATUS1(MFnSingleIndexedComponent, addElements, , MIntArray&)
STATUS1(MFnSingleIndexedComponent, getElements, const, MIntArray&)
STATUS1(MFnSingleIndexedComponent, setCompleteData, , int)
ANSWER1(MObject, MFnDoubleIndexedComponent, create, , MFn::Type)
STATUS2(MFnDoubleIndexedComponent, getElements, const, MIntArray&, MIntArray&)
ANSWER1(MObject, MFnTripleIndexedComponent, create, , MFn::Type)
STATUS3(MFnTripleIndexedComponent, getElements, const, MIntArray&, MIntArray&, MIntArray&)

STATIC3(MGlobal, executeCommand, const MString&, bool, bool)
STATIC4(MGlobal, executeCommand, const MString&, int&, bool, bool)
STATIC4(MGlobal, executeCommand, const MString&, MCommandResult&, bool, bool)
STATIC2(MGlobal, executeCommandOnIdle, const MString&, bool)
STATIC2(MGlobal, getActiveSelectionList, MSelectionList&, bool)
STATIC1(MGlobal, getPreselectionHiliteList, MSelectionList&)
STATIC2(MGlobal, getRichSelection, MRichSelection&, bool)
STATIC2(MGlobal, setActiveSelectionList, const MSelectionList&, MGlobal::ListAdjustment)
STATIC1(MGlobal, setRichSelection, const MRichSelection&)
STATIC4(MGlobal, selectFromScreen, const short&, const short&, MGlobal::ListAdjustment,
        MGlobal::SelectionMethod)
STATIC6(MGlobal, selectFromScreen, const short&, const short&, const short&, const short&,
        MGlobal::ListAdjustment, MGlobal::SelectionMethod)

ANSWER0(MObject, MItDependencyGraph, currentItem, )
STATUS0(MItDependencyGraph, next, )
ANSWER0(MObject, MItGeometry, currentItem, const)
ANSWER0(int, MItGeometry, count, const)
ANSWER0(int, MItGeometry, index, const)
ANSWER1(MPoint, MItGeometry, position, const, MSpace::Space)

ANSWER0(MPlug, MPlug, array, const)
ANSWER0(float, MPlug, asFloat, const)
ANSWER0(MObject, MPlug, attribute, const)
ANSWER1(MPlug, MPlug, child, const, unsigned int)
ANSWER3(bool, MPlug, connectedTo, const, MPlugArray&, bool, bool)
ANSWER1(MPlug, MPlug, elementByLogicalIndex, const, unsigned int)
ANSWER0(MObject, MPlug, node, const)
ANSWER0(MPlug, MPlug, parent, const)
STATUS2(MPlug, selectAncestorLogicalIndex, , unsigned int, const MObject&)
STATUS1(MPlug, setFloat, , float)

STATUS3(MSelectionList, add, , const MDagPath&, const MObject&, bool)
STATUS2(MSelectionList, add, , const MString&, bool)
STATUS3(MSelectionList, getDagPath, const, unsigned int, MDagPath&, MObject&)
STATUS2(MSelectionList, getDependNode, const, unsigned int, MObject&)
STATUS1(MRichSelection, getSelection, const, MSelectionList&)
STATUS1(MRichSelection, getSymmetry, const, MSelectionList&)
STATIC2(MDagPath, getAPathTo, const MObject&, MDagPath&)
ANSWER0(MString, MDagPath, fullPathName, const)
ANSWER0(MMatrix, MDagPath, inclusiveMatrix, const)
ANSWER0(MObject, MDagPath, node, const)
STATUS2(MEvent, getPosition, const, short&, short&)
ANSWER0(bool, MEvent, isModifierControl, const)
ANSWER0(bool, MEvent, isModifierShift, const)
STATUS1(MCommandResult, getResult, const, int&)
STATUS1(MCommandResult, getResult, const, MString&)
STATUS1(MCommandResult, getResult, const, MDoubleArray&)
STATUS1(MPxToolCommand, doFinalize, , MArgList&)
ANSWER3(bool, M3dView, worldToView, const, const MPoint&, short&, short&)

ATTACHED(MFnAttribute)
ATTACHED(MFnComponent)
ATTACHED(MFnDependencyNode)
ATTACHED(MFnGeometryFilter)
ATTACHED(MFnSet)
ATTACHED(MFnSingleIndexedComponent)
ATTACHED(MFnSkinCluster)
ATTACHED(MFnWeightGeometryFilter)
