// Whether a press landed on a point of a selection. The platform has found what lies under the cursor; this
// matches it.
#include "helperFunctions/helperFunctions.h"
#include "morvaneContext/morvaneContext.h"

#include <algorithm>
#include <array>
#include <maya/MFn.h>
#include <maya/MFnDoubleIndexedComponent.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MFnTripleIndexedComponent.h>
#include <set>

namespace {

/// Indices of one point: one, two or three of them count, the rest are zero.
using Element = std::array<int, 3>;

/// Elements in the component's order; none when it is of no such kind.
std::vector<Element> elementsOf(const MObject& component)
{
    MIntArray first, second, third;
    switch (pointKind(component)) {
    case MFn::kMeshVertComponent:
    case MFn::kCurveCVComponent:
        MFnSingleIndexedComponent(component).getElements(first);
        break;
    case MFn::kSurfaceCVComponent:
        MFnDoubleIndexedComponent(component).getElements(first, second);
        break;
    case MFn::kLatticeComponent:
        MFnTripleIndexedComponent(component).getElements(first, second, third);
        break;
    default:
        break;
    }
    std::vector<Element> elements(first.length());
    for (unsigned int k = 0; k < first.length(); ++k)
        elements[k] = {first[k], second.length() > k ? second[k] : 0, third.length() > k ? third[k] : 0};
    return elements;
}

MObject componentOf(MFn::Type kind, const Element& element)
{
    if (kind == MFn::kSurfaceCVComponent) {
        MFnDoubleIndexedComponent set;
        MObject component = set.create(kind);
        set.addElement(element[0], element[1]);
        return component;
    }
    if (kind == MFn::kLatticeComponent) {
        MFnTripleIndexedComponent set;
        MObject component = set.create(kind);
        set.addElement(element[0], element[1], element[2]);
        return component;
    }
    MFnSingleIndexedComponent set;
    MObject component = set.create(kind);
    set.addElement(element[0]);
    return component;
}

/// The first item of the list on the node; false when there is none.
bool findItemOn(const MObject& node, const MSelectionList& list, MDagPath& path, MObject& component)
{
    for (unsigned int item = 0; item < list.length(); ++item) {
        MObject itemComponent;
        if (list.getDagPath(item, path, itemComponent) && path.node() == node) {
            component = itemComponent;
            return true;
        }
    }
    return false;
}

} // namespace

void morvaneContext::getClickInfo(short, short, MSelectionList selection, MSelectionList candidates)
{
    clickHit = false;
    MDagPath candidatePath, path;
    MObject candidate, component;
    if (selection.isEmpty() || candidates.isEmpty())
        return;
    if (!candidates.getDagPath(0, candidatePath, candidate) || candidate.isNull())
        return;
    const std::vector<Element> wanted = elementsOf(candidate);
    if (wanted.empty() || !findItemOn(candidatePath.node(), selection, path, component))
        return;
    const std::set<Element> lookup(wanted.begin(), wanted.end());
    // Of several candidates the one that comes first in the selection wins.
    const std::vector<Element> selected = elementsOf(component);
    const auto match = std::find_if(selected.begin(), selected.end(),
                                    [&lookup](const Element& element) { return lookup.count(element) != 0; });
    if (match == selected.end())
        return;
    clickHit = true;
    clickDagPath = path;
    clickComponent = componentOf(pointKind(component), *match);
}
