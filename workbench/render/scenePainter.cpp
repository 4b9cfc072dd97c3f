#include "render/scenePainter.h"

#include "render/gl.h"

namespace workbench {

namespace {

constexpr const char* kBackgroundVertex = R"(#version 330 core
out float height;
void main()
{
    vec2 corner = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
    height = corner.y * 0.5 + 0.5;
    gl_Position = vec4(corner, 0.999999, 1.0);
})";

// A regular pattern of less than a step hides the bands of the gradient; unlike noise it packs well into
// files.
constexpr const char* kBackgroundFragment = R"(#version 330 core
in float height;
out vec4 shown;
void main()
{
    vec3 color = mix(vec3(0.135, 0.140, 0.150), vec3(0.330, 0.350, 0.375), smoothstep(-0.1, 1.15, height));
    const float pattern[16] = float[](0.0, 8.0, 2.0, 10.0, 12.0, 4.0, 14.0, 6.0,
                                      3.0, 11.0, 1.0, 9.0, 15.0, 7.0, 13.0, 5.0);
    ivec2 cell = ivec2(gl_FragCoord.xy) & 3;
    float step = (pattern[cell.y * 4 + cell.x] + 0.5) / 16.0 - 0.5;
    shown = vec4(color + step / 255.0, 1.0);
})";

constexpr const char* kSceneVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec4 color;
layout(location = 3) in float size;
uniform mat4 toCamera;
uniform mat4 toClip;
uniform float nearer;
uniform float pointScale;
out vec3 eyePosition;
out vec3 eyeNormal;
out vec4 tint;
void main()
{
    vec4 eye = toCamera * vec4(position, 1.0);
    bool perspective = toClip[2][3] != 0.0;
    if (perspective)
        eye.xyz *= 1.0 - nearer;
    eyePosition = eye.xyz;
    eyeNormal = mat3(toCamera) * normal;
    tint = color;
    gl_Position = toClip * eye;
    if (!perspective)
        gl_Position.z -= nearer * 0.05;
    gl_PointSize = size * pointScale;
})";

// Lines as strips of triangles, because drivers need not draw lines wider than a pixel. What lies behind the
// near plane is cut off first: it has no place on the screen.
constexpr const char* kLineGeometry = R"(#version 330 core
layout(lines) in;
layout(triangle_strip, max_vertices = 4) out;
in vec4 tint[];
uniform vec2 port;
uniform float width;
out vec4 lineTint;
void corner(vec4 end, vec2 aside, vec4 color)
{
    lineTint = color;
    gl_Position = vec4(end.xy + aside * end.w, end.zw);
    EmitVertex();
}
void main()
{
    vec4 from = gl_in[0].gl_Position, to = gl_in[1].gl_Position;
    float inFrontFrom = from.z + from.w, inFrontTo = to.z + to.w;
    if (inFrontFrom <= 0.0 && inFrontTo <= 0.0)
        return;
    if (inFrontFrom < 0.0)
        from = mix(from, to, inFrontFrom / (inFrontFrom - inFrontTo));
    else if (inFrontTo < 0.0)
        to = mix(to, from, inFrontTo / (inFrontTo - inFrontFrom));
    vec2 along = (to.xy / to.w - from.xy / from.w) * port;
    float size = length(along);
    along = size > 1e-6 ? along / size : vec2(1.0, 0.0);
    vec2 aside = vec2(-along.y, along.x) * width / port;
    corner(from, aside, tint[0]);
    corner(from, -aside, tint[0]);
    corner(to, aside, tint[1]);
    corner(to, -aside, tint[1]);
    EndPrimitive();
})";

// A key light over the camera's shoulder, a cool fill from the left, light from the sky, a faint edge. The
// sum is taken in linear light.
constexpr const char* kSurfaceFragment = R"(#version 330 core
in vec3 eyePosition;
in vec3 eyeNormal;
in vec4 tint;
uniform mat4 toCamera;
out vec4 shown;
void main()
{
    vec3 toEye = normalize(-eyePosition);
    vec3 n = normalize(eyeNormal);
    if (dot(n, toEye) < 0.0)
        n = -n;
    vec3 up = normalize(mat3(toCamera) * vec3(0.0, 1.0, 0.0));
    vec3 key = normalize(vec3(0.45, 0.75, 0.85));
    vec3 fill = normalize(vec3(-0.85, 0.10, 0.45));
    vec3 albedo = pow(tint.rgb, vec3(2.2));
    float lit = pow(clamp(dot(n, key) * 0.6 + 0.4, 0.0, 1.0), 1.6);
    vec3 light = lit * vec3(1.02, 0.98, 0.92);
    light += max(dot(n, fill), 0.0) * vec3(0.14, 0.18, 0.25);
    light += mix(vec3(0.05, 0.045, 0.05), vec3(0.16, 0.19, 0.23), dot(n, up) * 0.5 + 0.5);
    float gloss = pow(max(dot(n, normalize(key + toEye)), 0.0), 42.0) * 0.10;
    float edge = pow(1.0 - max(dot(n, toEye), 0.0), 3.5) * 0.10;
    vec3 linear = albedo * light + vec3(gloss) + edge * vec3(0.6, 0.75, 1.0);
    shown = vec4(pow(linear, vec3(1.0 / 2.2)), tint.a);
})";

constexpr const char* kLineFragment = R"(#version 330 core
in vec4 lineTint;
out vec4 shown;
void main() { shown = lineTint; })";

// Round, with a dark rim so that it shows on any ground.
constexpr const char* kPointFragment = R"(#version 330 core
in vec4 tint;
out vec4 shown;
void main()
{
    float away = length(gl_PointCoord - vec2(0.5)) * 2.0;
    if (away > 1.0)
        discard;
    float rim = smoothstep(0.62, 0.85, away);
    shown = vec4(mix(tint.rgb, tint.rgb * 0.25, rim), tint.a * (1.0 - smoothstep(0.88, 1.0, away)));
})";

void paintBackground()
{
    const Shader shader(kBackgroundVertex, kBackgroundFragment);
    GLuint arrays = 0;
    glGenVertexArrays(1, &arrays);
    glBindVertexArray(arrays);
    glDisable(GL_DEPTH_TEST);
    shader.use();
    glDrawArrays(GL_TRIANGLES, 0, 3);
    glDeleteVertexArrays(1, &arrays);
}

/// A shader set to the camera. `nearer` pulls towards the eye, as a share of the distance.
void useCamera(const Shader& shader, const CameraView& camera, float nearer)
{
    shader.use();
    shader.set("toCamera", camera.toCamera);
    shader.set("toClip", camera.toClip);
    shader.set("nearer", nearer);
}

VertexBuffer buffered(const SceneView::Shape& shape)
{
    return {shape.vertices.data(), shape.vertices.size(), shape.indices.data(), shape.indices.size()};
}

void paintSurfaces(const SceneView::Shape& surfaces, const CameraView& camera)
{
    const Shader surface(kSceneVertex, kSurfaceFragment);
    useCamera(surface, camera, 0.0F);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0F, 1.0F);
    buffered(surfaces).drawTriangles();
    glDisable(GL_POLYGON_OFFSET_FILL);
}

void paintLines(const SceneView& view, const CameraView& camera, const DrawScale& scale)
{
    constexpr double kCurveWidth = 1.8;
    const Shader line(kSceneVertex, kLineFragment, kLineGeometry);
    const auto width = [&](double pixels) { line.set("width", static_cast<float>(pixels * scale.unit)); };
    // The ground lies under what lies on it.
    useCamera(line, camera, -0.0015F);
    line.set("port", static_cast<float>(camera.width), static_cast<float>(camera.height));
    width(1.0);
    buffered(view.grid).drawLines();
    line.set("nearer", 0.0012F);
    buffered(view.lines).drawLines();
    width(kCurveWidth);
    buffered(view.curves).drawLines();
}

void paintPoints(const std::vector<DrawVertex>& points, const CameraView& camera, const DrawScale& scale)
{
    const Shader point(kSceneVertex, kPointFragment);
    useCamera(point, camera, 0.003F);
    point.set("pointScale", static_cast<float>(scale.mark));
    glEnable(GL_PROGRAM_POINT_SIZE);
    VertexBuffer(points.data(), points.size(), nullptr, 0).drawPoints();
}

} // namespace

void paintScene(const SceneView& view, const CameraView& camera, const DrawScale& scale)
{
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    paintBackground();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    paintSurfaces(view.surfaces, camera);
    // What is blended hides nothing behind it.
    glDepthMask(GL_FALSE);
    paintLines(view, camera, scale);
    paintPoints(view.points, camera, scale);
    glDepthMask(GL_TRUE);
    glDisable(GL_DEPTH_TEST);
}

} // namespace workbench
