#pragma once

#include "weightModes/weightStore.h"

/// What keeps a point's weight of an influence from being sculpted, for people; empty when nothing does. What
/// the influence gains the others lose, and the other way round: without one that is free and has weight
/// there the row cannot keep its sum, whatever the pose.
MString influenceObstacle(const MDagPath& edited, const ClickedPoint& point, const MString& name, bool moves);
