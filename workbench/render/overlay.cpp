#include "render/overlay.h"

#include "render/fonts.h"
#include "render/overlayBones.h"
#include "render/overlayLines.h"
#include "render/overlayText.h"
#include "session.h"
#include "types/error.h"
#include "view/viewport.h"

#include <backends/imgui_impl_opengl3.h>
#include <imgui.h>

namespace workbench {

namespace {

/// Dear ImGui for the length of one picture.
class Interface {
public:
    Interface(double width, double height)
    {
        IMGUI_CHECKVERSION();
        ImGui::CreateContext();
        ImGuiIO& io = ImGui::GetIO();
        io.IniFilename = nullptr;
        io.LogFilename = nullptr;
        io.DisplaySize = ImVec2(static_cast<float>(width), static_cast<float>(height));
        io.DeltaTime = 1.0F / 60.0F;
    }
    ~Interface()
    {
        if (drawing)
            ImGui_ImplOpenGL3_Shutdown();
        ImGui::DestroyContext();
    }
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;

    ImDrawList& begin()
    {
        if (!ImGui_ImplOpenGL3_Init("#version 330 core"))
            throw host::Error("Cannot draw a picture: the text renderer found no OpenGL.");
        drawing = true;
        ImGui_ImplOpenGL3_NewFrame();
        ImGui::NewFrame();
        return *ImGui::GetForegroundDrawList();
    }
    void end()
    {
        ImGui::Render();
        ImGui_ImplOpenGL3_RenderDrawData(ImGui::GetDrawData());
    }

private:
    bool drawing = false;
};

OverlayFrame frameOf(host::Session& session, const Fonts& fonts, const DrawScale& scale)
{
    return {fonts, session.viewport().projection(), scale};
}

} // namespace

void paintOverlay(host::Session& session, const SceneView& view, const DrawScale& scale)
{
    const host::Viewport& viewport = session.viewport();
    Interface interface(viewport.width * scale.density, viewport.height * scale.density);
    // Fonts must be known before the first frame.
    const Fonts fonts(session, scale.unit);
    ImDrawList& list = interface.begin();
    OverlayPen pen(frameOf(session, fonts, scale), list);
    drawBones(pen, view);
    drawToolLines(pen, session);
    drawLegend(pen, legendPlace(pen, view));
    drawAxes(pen, viewport.viewMatrix());
    drawStatusGround(pen);
    for (const PlacedText& text : placeTexts(pen, session, view)) {
        const ImVec2 at(text.box.left, text.box.top);
        if (text.kind == PlacedText::Kind::kStatus || text.kind == PlacedText::Kind::kToolName)
            pen.plainText(at, text.text, text.pixels, text.color);
        else
            pen.text(at, text.text, text.pixels, text.color);
    }
    interface.end();
}

std::vector<PlacedText> overlayTexts(host::Session& session, const SceneView& view, const DrawScale& scale)
{
    const host::Viewport& viewport = session.viewport();
    const Interface interface(viewport.width * scale.density, viewport.height * scale.density);
    const Fonts fonts(session, scale.unit);
    ImGui::GetIO().Fonts->Build();
    return placeTexts(frameOf(session, fonts, scale), session, view);
}

} // namespace workbench
