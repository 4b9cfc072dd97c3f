#include "render/overlay.h"

#include "render/fonts.h"
#include "render/overlayBones.h"
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
    Interface(int width, int height)
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

} // namespace

void paintOverlay(host::Session& session, const SceneView& view)
{
    const host::Viewport& viewport = session.viewport();
    Interface interface(viewport.width, viewport.height);
    // Fonts must be known before the first frame.
    const Fonts fonts(session);
    ImDrawList& list = interface.begin();
    OverlayPen pen{list, fonts, viewport.projection()};
    drawBones(pen, view);
    drawToolDrawing(pen, session);
    drawHeadsUp(pen, session);
    drawAxes(pen, viewport.viewMatrix());
    drawStatusLine(pen, session);
    interface.end();
}

} // namespace workbench
