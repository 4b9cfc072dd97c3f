// From the selection in the scene to the objects, points and falloffs of an edit.
#include "helperFunctions/helperFunctions.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <algorithm>
#include <array>
#include <map>
#include <maya/MFn.h>
#include <maya/MFnComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <maya/MWeight.h>

namespace {

const char* const kNoComponent = "the points to edit cannot be gathered";
const char* const kNotSelected = "the objects to edit cannot be gathered";

/// What a selected component and one member component of the deformer have in common. `falloff` is appended
/// to. Null when nothing.
using CommonPoints = MObject (*)(const MObject& selected, const MObject& member, MFloatArray& falloff);

float falloffAt(const MFnComponent& component, std::size_t position)
{
    return component.weight(static_cast<int>(position)).influence();
}

/// Of all points of a component, in its order.
MFloatArray falloffsOf(const MObject& points)
{
    const MFnComponent component(points);
    const int count = points.isNull() ? 0 : component.elementCount();
    std::vector<float> falloff(static_cast<std::size_t>(count > 0 ? count : 0));
    for (std::size_t position = 0; position < falloff.size(); ++position)
        falloff[position] = falloffAt(component, position);
    return MFloatArray(falloff.data(), static_cast<unsigned int>(falloff.size()));
}

/// Two components of one shape as one, and its falloffs. Points of both count as the second one has them,
/// as if it were written after the first.
MObject united(const EditedObject& first, const MObject& second, MFloatArray& falloffs)
{
    std::map<int, float> points;
    const std::vector<int> earlier = componentElements(first.component), later = componentElements(second);
    const MFloatArray laterFalloffs = falloffsOf(second);
    for (std::size_t k = 0; k < earlier.size() && k < falloffs.length(); ++k)
        points[earlier[k]] = falloffs[static_cast<unsigned int>(k)];
    for (std::size_t k = 0; k < later.size() && k < laterFalloffs.length(); ++k)
        points[later[k]] = laterFalloffs[static_cast<unsigned int>(k)];
    MFnSingleIndexedComponent set;
    MObject component = set.create(second.apiType());
    MIntArray elements;
    falloffs.clear();
    for (const auto& point : points) {
        elements.append(point.first);
        falloffs.append(point.second);
    }
    require(set.addElements(elements), kNoComponent);
    return component;
}

/// Makes one item of an item on a shape and another one on it that is there already, with the falloffs that
/// belong to the list: layers are written as a whole, so that two writes would undo one another. False when
/// there is none; only points with one index are united, since layers have no others.
bool uniteWithItemOnShape(const EditedObject& selected, MSelectionList& objects, MFloatArray* falloffs)
{
    const bool isPoints =
        selected.component.hasFn(MFn::kMeshVertComponent) || selected.component.hasFn(MFn::kCurveCVComponent);
    const int place = isPoints ? selectionListIndexOf(objects, selected.path) : -1;
    if (place < 0)
        return false;
    MSelectionList rebuilt;
    for (unsigned int index = 0; index < objects.length(); ++index) {
        EditedObject object;
        findEditedObject(objects, index, object);
        if (index != static_cast<unsigned int>(place)) {
            require(rebuilt.add(object.path, object.component, false), kNotSelected);
            continue;
        }
        if (object.component.apiType() != selected.component.apiType())
            return false;
        require(rebuilt.add(object.path, united(object, selected.component, falloffs[index]), false),
                kNotSelected);
    }
    objects = rebuilt;
    return true;
}

/// A forward merge of two ascending lists: a selected index that lies before the last match is dropped.
template <MFn::Type kind>
MObject commonSingle(const MObject& selected, const MObject& member, MFloatArray& falloff)
{
    if (!selected.hasFn(kind))
        return MObject();
    const std::vector<int> members = componentElements(member);
    const std::vector<int> elements = componentElements(selected);
    const MFnSingleIndexedComponent weights(selected);
    const bool ascending = std::is_sorted(members.begin(), members.end());
    auto cursor = members.begin();
    MIntArray common;
    for (std::size_t k = 0; k < elements.size(); ++k) {
        const auto match = ascending ? std::lower_bound(cursor, members.end(), elements[k])
                                     : std::find(cursor, members.end(), elements[k]);
        if (match == members.end() || *match != elements[k])
            continue;
        cursor = match;
        common.append(elements[k]);
        falloff.append(falloffAt(weights, k));
    }
    if (common.length() == 0)
        return MObject();
    MFnSingleIndexedComponent set;
    MObject component = set.create(kind);
    require(set.addElements(common), kNoComponent);
    return component;
}

/// Surfaces are never edited: their points are compared as if neither side had any.
MObject commonSurface(const MObject&, const MObject&, MFloatArray&)
{
    return MObject();
}

std::vector<std::array<int, 3>> latticePoints(const MObject& component)
{
    MIntArray s, t, u;
    MFnTripleIndexedComponent(component).getElements(s, t, u);
    std::vector<std::array<int, 3>> points(s.length());
    for (unsigned int k = 0; k < s.length(); ++k)
        points[k] = {s[k], t[k], u[k]};
    return points;
}

/// Lattice points take the falloff at the member's position of the match, not at the selection's: sculpted
/// lattices look as they do because of it.
MObject commonLattice(const MObject& selected, const MObject& member, MFloatArray& falloff)
{
    const std::vector<std::array<int, 3>> members = latticePoints(member);
    std::map<std::array<int, 3>, std::size_t> firstPositions;
    for (std::size_t position = 0; position < members.size(); ++position)
        firstPositions.emplace(members[position], position);
    const MFnTripleIndexedComponent weights(selected);
    MFnTripleIndexedComponent set;
    MObject component = set.create(MFn::kLatticeComponent);
    bool found = false;
    for (const std::array<int, 3>& point : latticePoints(selected)) {
        const auto match = firstPositions.find(point);
        if (match == firstPositions.end())
            continue;
        require(set.addElement(point[0], point[1], point[2]), kNoComponent);
        falloff.append(falloffAt(weights, match->second));
        found = true;
    }
    return found ? component : MObject();
}

/// By the kind of the member's component; null for kinds that are not edited.
CommonPoints commonPointsOf(const MObject& member)
{
    if (member.hasFn(MFn::kMeshVertComponent))
        return commonSingle<MFn::kMeshVertComponent>;
    if (member.hasFn(MFn::kCurveCVComponent))
        return commonSingle<MFn::kCurveCVComponent>;
    if (member.hasFn(MFn::kSurfaceCVComponent))
        return commonSurface;
    if (member.hasFn(MFn::kLatticeComponent))
        return commonLattice;
    return nullptr;
}

} // namespace

/// Edges and faces have indices of their own, which are no points'. A whole object has no component.
bool morvaneContext::holdsPoints(const EditedObject& selected)
{
    if (selected.component.isNull() || pointKind(selected.component) != MFn::kInvalid)
        return true;
    if (explaining.wrongComponents.length() == 0)
        explaining.wrongComponents = verticesWanted(selected.path, selected.component);
    return false;
}

void morvaneContext::analyzeSel(MSelectionList sel, MSelectionList& selectedObjects,
                                std::vector<MFloatArray>& falloffs)
{
    for (unsigned int item = 0; item < sel.length(); ++item) {
        EditedObject selected;
        if (!findEditedObject(sel, item, selected) || !holdsPoints(selected))
            continue;
        const MObject node = selected.path.node();
        // Not cleared between members: a second member on one object gets the falloff of the first before its
        // own.
        MFloatArray falloff;
        for (unsigned int entry = 0; entry < deformerMembers.length(); ++entry) {
            EditedObject member;
            if (!findEditedObject(deformerMembers, entry, member) || !(member.path.node() == node))
                continue;
            const CommonPoints commonPoints = commonPointsOf(member.component);
            if (commonPoints == nullptr)
                continue;
            const MObject common = commonPoints(selected.component, member.component, falloff);
            if (common.isNull())
                continue;
            require(selectedObjects.add(selected.path, common, false), kNotSelected);
            falloffs.push_back(falloff);
        }
    }
}

void morvaneContext::analyzeSelSkin(MSelectionList sel, MSelectionList& selectedObjects,
                                    std::vector<MFloatArray>&, MObjectArray& skinClusters)
{
    const WeightStore& store = modeRow(weightMode).store();
    // Where the falloffs of these objects begin in the column: others may stand before them.
    const std::size_t before = softSelectWeights.size() - selectedObjects.length();
    const TargetInput input = {*this, ngEnabled, targetNames()};
    for (unsigned int item = 0; item < sel.length(); ++item) {
        EditedObject selected;
        if (!findEditedObject(sel, item, selected) || !holdsPoints(selected))
            continue;
        if (modeRow(weightMode).isLayerMode &&
            uniteWithItemOnShape(selected, selectedObjects, softSelectWeights.data() + before))
            continue;
        MStatus status;
        MObject skinCluster = getSkinCluster(selected.path, status);
        const MString problem = status ? store.addSkinColumns(input, selected.path, skinCluster)
                                       : shapeName(selected.path) + " has no skin cluster.";
        if (problem.length() != 0) {
            if (selected.path.node() == clickDagPath.node())
                explaining.skipped = problem;
            continue;
        }
        skinClusters.append(skinCluster);
        require(selectedObjects.add(selected.path, selected.component, false), kNotSelected);
        // Always the tool's own column, whichever the caller passed: a copy's falloff lands here too.
        softSelectWeights.push_back(falloffsOf(selected.component));
    }
}
