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

// The noise of half a step hides the bands of the gradient.
constexpr const char* kBackgroundFragment = R"(#version 330 core
in float height;
out vec4 shown;
void main()
{
    vec3 color = mix(vec3(0.135, 0.140, 0.150), vec3(0.330, 0.350, 0.375), smoothstep(-0.1, 1.15, height));
    float noise = fract(sin(dot(gl_FragCoord.xy, vec2(12.9898, 78.233))) * 43758.5453) - 0.5;
    shown = vec4(color + noise / 255.0, 1.0);
})";

constexpr const char* kSceneVertex = R"(#version 330 core
layout(location = 0) in vec3 position;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec4 color;
layout(location = 3) in float size;
uniform mat4 toCamera;
uniform mat4 toClip;
uniform float nearer;
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
    gl_PointSize = size;
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

constexpr const char* kPlainFragment = R"(#version 330 core
in vec4 tint;
out vec4 shown;
void main() { shown = tint; })";

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
void useCamera(const Shader& shader, const Imath::M44d& toCamera, const Imath::M44d& toClip, float nearer)
{
    shader.use();
    shader.set("toCamera", toCamera);
    shader.set("toClip", toClip);
    shader.set("nearer", nearer);
}

VertexBuffer buffered(const SceneView::Shape& shape)
{
    return {shape.vertices.data(), shape.vertices.size(), shape.indices.data(), shape.indices.size()};
}

} // namespace

void paintScene(const SceneView& view, const Imath::M44d& toCamera, const Imath::M44d& toClip)
{
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    paintBackground();
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);

    const Shader surface(kSceneVertex, kSurfaceFragment);
    useCamera(surface, toCamera, toClip, 0.0F);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0F, 1.0F);
    buffered(view.surfaces).drawTriangles();
    glDisable(GL_POLYGON_OFFSET_FILL);

    // What is blended hides nothing behind it.
    glDepthMask(GL_FALSE);
    const Shader plain(kSceneVertex, kPlainFragment);
    useCamera(plain, toCamera, toClip, 0.0F);
    buffered(view.grid).drawLines();
    useCamera(plain, toCamera, toClip, 0.0012F);
    buffered(view.lines).drawLines();

    const Shader point(kSceneVertex, kPointFragment);
    useCamera(point, toCamera, toClip, 0.003F);
    glEnable(GL_PROGRAM_POINT_SIZE);
    VertexBuffer(view.points.data(), view.points.size(), nullptr, 0).drawPoints();
    glDepthMask(GL_TRUE);
    glDisable(GL_DEPTH_TEST);
}

} // namespace workbench
