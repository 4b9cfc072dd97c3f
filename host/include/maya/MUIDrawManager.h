#pragma once

#include <maya/MColor.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

namespace host {
struct Api;
struct DrawRecord;
} // namespace host

MAYA_HOST_NAMESPACE_OPEN

namespace MHWRender {

/// Records what a tool draws over a view until the next event. Objects are handed in; plug-ins make none.
/// State such as colour and line style is reset at endDrawable().
class MAYA_HOST_EXPORT MUIDrawManager {
public:
    enum Selectability : int {
        kNonSelectable = 0,
        kSelectable = 1,
        kAutomatic = 2,
    };

    enum LineStyle : int {
        kSolid = 0,
        kShortDotted = 1,
        kShortDashed = 2,
        kDashed = 3,
        kDotted = 4,
    };

    enum TextAlignment : int {
        kLeft = 0,
        kCenter = 1,
        kRight = 2,
    };

    enum FontSize : int {
        kDefaultFontSize = 12,
        kSmallFontSize = 9,
    };

    MUIDrawManager(const MUIDrawManager&) = delete;
    MUIDrawManager& operator=(const MUIDrawManager&) = delete;

    void beginDrawable(Selectability selectability = kAutomatic, unsigned int selectionName = 0);
    void endDrawable();
    void setColor(const MColor& color);
    void setLineStyle(LineStyle style);
    void setLineWidth(float value);
    void setFontSize(const unsigned int fontSize);
    /// World space.
    void line(const MPoint& startPoint, const MPoint& endPoint);
    /// Port pixels.
    void line2d(const MPoint& startPoint, const MPoint& endPoint);
    /// At a point in world space; the size is in pixels.
    void text(const MPoint& position, const MString& text, TextAlignment alignment = kLeft,
              const int* backgroundSize = nullptr, const MColor* backgroundColor = nullptr,
              bool dynamic = false);
    /// At a point in port pixels.
    void text2d(const MPoint& position, const MString& text, TextAlignment alignment = kLeft,
                const int* backgroundSize = nullptr, const MColor* backgroundColor = nullptr,
                bool dynamic = false);

private:
    friend struct host::Api;
    explicit MUIDrawManager(host::DrawRecord& target) : record(&target) {}
    ~MUIDrawManager() = default;

    host::DrawRecord* record;
};

} // namespace MHWRender

MAYA_HOST_NAMESPACE_CLOSE
