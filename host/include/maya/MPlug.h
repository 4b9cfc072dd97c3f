#pragma once

#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
}

MAYA_HOST_NAMESPACE_OPEN

/// One attribute of one node, with the indices chosen on the way to it. A small value: copying, indexing, and
/// reading and writing numbers allocate nothing. Writing is not undoable.
class MAYA_HOST_EXPORT MPlug {
public:
    MPlug();
    MPlug(const MPlug& in);
    MPlug(const MObject& node, const MObject& attribute);
    virtual ~MPlug();
    MPlug& operator=(const MPlug& other);
    bool operator==(const MPlug& other) const;
    bool operator==(const MObject& other) const;
    bool operator!=(const MPlug& other) const;
    bool operator!=(const MObject& other) const;

    bool isNull(MStatus* status = nullptr) const;
    bool operator!() const;
    MObject node(MStatus* status = nullptr) const;
    MObject attribute(MStatus* status = nullptr) const;
    MString name(MStatus* status = nullptr) const;
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = true,
                        bool includeInstancedIndices = true, bool useAlias = false,
                        bool useFullAttributePath = false, bool useLongNames = false,
                        MStatus* status = nullptr) const;
    MString info(MStatus* status = nullptr) const;

    bool isNetworked(MStatus* status = nullptr) const;
    bool isArray(MStatus* status = nullptr) const;
    bool isElement(MStatus* status = nullptr) const;
    bool isCompound(MStatus* status = nullptr) const;
    bool isChild(MStatus* status = nullptr) const;
    bool isConnected(MStatus* status = nullptr) const;
    bool isLocked(MStatus* status = nullptr) const;
    MStatus setLocked(bool locked);

    unsigned int logicalIndex(MStatus* status = nullptr) const;
    /// A null attribute means the attribute of the plug itself.
    MStatus selectAncestorLogicalIndex(unsigned int index, const MObject& attribute = MObject::kNullObj);
    MPlug elementByLogicalIndex(unsigned int logicalIndex, MStatus* status = nullptr) const;
    /// Physical: the rank among the elements that exist.
    MPlug elementByPhysicalIndex(unsigned int physicalIndex, MStatus* status = nullptr) const;
    unsigned int numElements(MStatus* status = nullptr) const;
    unsigned int evaluateNumElements(MStatus* status = nullptr);
    unsigned int getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status = nullptr);
    /// As elementByPhysicalIndex and as child.
    MPlug operator[](unsigned int physicalIndex) const;
    MPlug operator[](MObject& attr) const;
    MPlug child(MObject& attr, MStatus* status = nullptr) const;
    MPlug child(unsigned int index, MStatus* status = nullptr) const;
    unsigned int numChildren(MStatus* status = nullptr) const;
    MPlug parent(MStatus* status = nullptr) const;
    MPlug array(MStatus* status = nullptr) const;
    bool connectedTo(MPlugArray& array, bool asDst, bool asSrc, MStatus* status = nullptr) const;

    /// Reading evaluates. Angles are read and written in radians.
    double asDouble(MStatus* status = nullptr) const;
    float asFloat(MStatus* status = nullptr) const;
    int asInt(MStatus* status = nullptr) const;
    short asShort(MStatus* status = nullptr) const;
    char asChar(MStatus* status = nullptr) const;
    MInt64 asInt64(MStatus* status = nullptr) const;
    bool asBool(MStatus* status = nullptr) const;
    MString asString(MStatus* status = nullptr) const;
    MStatus setDouble(double);
    MStatus setFloat(float);
    MStatus setInt(int);
    MStatus setShort(short);
    MStatus setChar(char);
    MStatus setInt64(MInt64);
    MStatus setBool(bool);
    MStatus setString(const MString&);
    /// The same for every type: getValue leaves the target alone when it fails.
    MStatus getValue(double&) const;
    MStatus getValue(float&) const;
    MStatus getValue(MInt64&) const;
    MStatus getValue(int&) const;
    MStatus getValue(short&) const;
    MStatus getValue(char&) const;
    MStatus getValue(bool&) const;
    MStatus getValue(MString&) const;
    MStatus setValue(double);
    MStatus setValue(float);
    MStatus setValue(MInt64);
    MStatus setValue(int);
    MStatus setValue(short);
    MStatus setValue(char);
    MStatus setValue(bool);
    MStatus setValue(const MString&);
    MStatus setValue(const char*);
    static const char* className() { return "MPlug"; }

private:
    friend struct host::Api;
    static constexpr unsigned int kStorageSize = 48;

    alignas(8) unsigned char storage[kStorageSize];
};

MAYA_HOST_NAMESPACE_CLOSE
