#include "weightModes/keptNodes.h"

#include "weightModes/editRecord.h"

#include <maya/MDagPath.h>

KeptNodes keep(const MObjectArray& nodes)
{
    KeptNodes kept;
    for (unsigned int index = 0; index < nodes.length(); ++index)
        kept.emplace_back(nodes[index]);
    return kept;
}

KeptNodes keepShapes(const MSelectionList& selection)
{
    KeptNodes kept;
    for (unsigned int index = 0; index < selection.length(); ++index) {
        MDagPath path;
        MObject component;
        selection.getDagPath(index, path, component);
        kept.emplace_back(path.node());
    }
    return kept;
}

void EditRecord::keepObjects()
{
    validShapes = keepShapes(validSel);
    validHolders = validSkinClusters.length() != 0 ? keep(validSkinClusters)
                                                   : KeptNodes(validShapes.size(), activeDeformer);
}
