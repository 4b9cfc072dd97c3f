// Which way on screen means more weight, and how far the mouse has gone that way.
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <maya/M3dView.h>
#include <maya/MItGeometry.h>
#include <maya/MTypes.h>

namespace {

/// With control held a drag counts for this part.
constexpr double kPrecisionFactor = 10.0;

/// Puts the nudged weight back when the probe ends, however it ends.
class ProbeScope {
public:
    ProbeScope(WeightProbe& openProbe, double probeStep) : probe(openProbe), step(probeStep) {}
    ~ProbeScope()
    {
        MStatus status;
        insist([this, &status] {
            status = probe.restore(step);
            return status;
        });
        if (!status)
            apiError(status, kContextSource, __LINE__);
    }
    ProbeScope(const ProbeScope&) = delete;
    ProbeScope& operator=(const ProbeScope&) = delete;

private:
    WeightProbe& probe;
    double step;
};

/// The object-space position of a one-point component, as deformed now.
MStatus readPosition(const ClickedPoint& point, MPoint& position)
{
    MStatus status;
    MObject component = point.component;
    MItGeometry iterator(point.path, component, &status);
    if (status)
        position = iterator.position(MSpace::kObject, &status);
    return status;
}

/// A point in port pixels. Pixels are sixteen-bit, as the view gives them.
MPoint projected(const M3dView& view, const MPoint& point)
{
    short x = 0, y = 0;
    view.worldToView(point, x, y);
    return MPoint(x, y, 0, 1);
}

} // namespace

MStatus morvaneContext::probeClickedVertex(MPoint& low, MPoint& high)
{
    MStatus status;
    ClickedPoint point = {clickDagPath, clickComponent, 0};
    {
        MObject component = clickComponent;
        const MItGeometry iterator(clickDagPath, component, &status);
        if (!status)
            return apiError(status, kContextSource, __LINE__);
        point.vertex = iterator.index();
    }
    const std::unique_ptr<WeightProbe> probe = modeRow(weightMode).store().openProbe(*this, point, status);
    if (!probe)
        return status;
    const ProbeScope restoring(*probe, directionStep);
    status = probe->writeLow(directionStep);
    if (status)
        status = readPosition(point, low);
    if (!status)
        return apiError(status, kContextSource, __LINE__);
    status = probe->writeHigh(directionStep);
    if (status)
        status = readPosition(point, high);
    return status ? status : apiError(status, kContextSource, __LINE__);
}

MStatus morvaneContext::getDirectionVector()
{
    MPoint low, high;
    MStatus status = probeClickedVertex(low, high);
    if (!status)
        return status;
    explaining.probed = true;
    const M3dView view = M3dView::active3dView(&status);
    if (!status)
        return apiError(status, kContextSource, __LINE__);
    // Object-space positions serve as world points: a transform turns and scales all of them alike.
    const double span = 2.0 * directionStep;
    directionVector = projected(view, high) - projected(view, low);
    if (directionVector.length() >= 1.0) {
        directionVector /= span;
    } else {
        const MVector perUnit = (high - low) / span;
        directionVector = projected(view, low + perUnit) - projected(view, low);
    }
    return MS::kSuccess;
}

MStatus morvaneContext::getDirectionScalar()
{
    const MVector drag = dragPoint - pressPoint;
    const double length = directionVector.length();
    offsetValue = 0.0;
    if (length < kNoLength || drag.length() < kNoLength)
        return MS::kFailure;
    offsetValue = (directionVector * drag) / length / length;
    if (controlHeld)
        offsetValue = offsetValue / kPrecisionFactor;
    return MS::kSuccess;
}
