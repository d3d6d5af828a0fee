// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
#include "ZYLStudioViewer.h"

#include "ZYLVisEnvironment.h"
#include "ZYLVisGizmo.h"
#include "ZYLVisOptions.h"
#include "ZYLVisPrimitive.h"
#include "ZYLVisRep.h"
#include "ZYLVisTrianglePrimitive.h"
#include "ZYLVisVirtualObject.h"

#include <QMouseEvent>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions_3_3_Core>
#include <QOpenGLShaderProgram>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <vector>

// Resources of a static library must be registered by hand, outside any namespace.
static void initStudioViewerResources()
{
    Q_INIT_RESOURCE(ZYLStudioViewer);
}

namespace {
// A press and release closer than this (pixels) is a click, not a drag.
constexpr int clickTolerance = 3;
// One wheel notch zooms by this factor.
constexpr double wheelZoomFactor = 0.85;
// A primitive whose centre is farther from its origin than this many times its size is
// uploaded relative to its centre: floats keep about 7 digits.
constexpr double farFromOriginRatio = 8.0;
// Gizmos lie above every priority band.
constexpr int gizmoPriority = std::numeric_limits<int>::max();
// Thinning dense points and polylines: below this many vertices it is not worth it.
constexpr int thinningMinVertices = 64;
// Largest vertex stride used when thinning (the attribute stride stays well below 2048 bytes).
constexpr int thinningMaxStride = 128;
// A thinned polyline keeps its drawn vertices at most this many pixels apart.
constexpr double thinnedLineStepPixels = 2.0;
// While the user turns, pans or zooms, thinning may go this much further; the view is drawn
// in full detail again once the motion stops.
constexpr double interactiveThinning = 4.0;
constexpr int settleMilliseconds = 300;
// Smallest change of a colour channel (0..1) that counts as a visible highlight.
constexpr double minHighlightContrast = 0.2;

/// One primitive in GPU buffers.
struct GpuPrimitive {
    ZYLVisPrimitive::Kind kind = ZYLVisPrimitive::Kind::Points;
    ZYLVisOptions options;
    GLuint vao = 0;
    GLuint buffers[3] = {0, 0, 0}; // positions, normals, indices
    GLsizei count = 0;
    /// The point of the primitive's coordinates that the uploaded positions are relative to.
    ZYLMathPoint origin;
    /// The box of the vertices relative to `origin`.
    ZYLMathBoundingBox box;
    /// The longest distance between consecutive vertices (points and polylines that are worth
    /// thinning; 0 otherwise).
    double maxStep = 0.0;
    /// Vertex arrays reading every k-th vertex of the same buffer, by k, made on first use.
    std::vector<std::pair<int, GLuint>> thinnedVaos;
};

/// The buffers of one representation, and the frame in which the scene last used it.
struct GpuRep {
    std::vector<GpuPrimitive> primitives;
    quint64 lastUse = 0;
};

enum class Pass { Opaque, Transparent, OnTop };

struct DrawItem {
    int priority = 0;
    Pass pass = Pass::Opaque;
    GpuPrimitive *primitive = nullptr;
    /// Draw every stride-th vertex only.
    int stride = 1;
    QMatrix4x4 modelView;
    QColor color;
};

enum class DragMode { None, Orbit, Pan, Gizmo };

/// Returns whether a box (relative to a primitive's origin) lies wholly outside one plane of
/// the view volume of `modelViewProjection`.
bool IsOutsideView(const ZYLMathBoundingBox &box, const QMatrix4x4 &modelViewProjection)
{
    if (box.IsEmpty())
        return true;
    int outside[6] = {0, 0, 0, 0, 0, 0};
    for (int corner = 0; corner < 8; ++corner) {
        const QVector4D clip = modelViewProjection.map(
            QVector4D(float(corner & 1 ? box.GetMax().X() : box.GetMin().X()),
                      float(corner & 2 ? box.GetMax().Y() : box.GetMin().Y()),
                      float(corner & 4 ? box.GetMax().Z() : box.GetMin().Z()), 1.0f));
        outside[0] += clip.x() < -clip.w();
        outside[1] += clip.x() > clip.w();
        outside[2] += clip.y() < -clip.w();
        outside[3] += clip.y() > clip.w();
        outside[4] += clip.z() < -clip.w();
        outside[5] += clip.z() > clip.w();
    }
    return std::any_of(std::begin(outside), std::end(outside), [](int n) { return n == 8; });
}

QVector3D toVector3D(const QColor &color)
{
    return {float(color.redF()), float(color.greenF()), float(color.blueF())};
}

QColor mix(const QColor &a, const QColor &b, double t)
{
    return QColor::fromRgbF(float(a.redF() + (b.redF() - a.redF()) * t), float(a.greenF() + (b.greenF() - a.greenF()) * t),
                            float(a.blueF() + (b.blueF() - a.blueF()) * t));
}

double colorDistance(const QColor &a, const QColor &b)
{
    return std::max({std::abs(a.redF() - b.redF()), std::abs(a.greenF() - b.greenF()), std::abs(a.blueF() - b.blueF())});
}

// A highlight must be seen: when mixing towards the preferred colour hardly changes an object
// already of about that colour, the fallback colour is mixed in instead.
QColor mixVisibly(const QColor &color, const QColor &preferred, const QColor &fallback, double t)
{
    const QColor mixed = mix(color, preferred, t);
    return colorDistance(mixed, color) >= minHighlightContrast ? mixed : mix(color, fallback, t);
}
} // namespace

struct ZYLStudioViewer::Data {
    QPointer<ZYLVisEnvironment> environment;
    ZYLStudioCamera camera;
    QColor backgroundTop{92, 104, 128};
    QColor backgroundBottom{205, 210, 220};
    QColor highlight{255, 140, 0};

    QOpenGLFunctions_3_3_Core gl;
    bool glReady = false;
    std::unique_ptr<QOpenGLShaderProgram> backgroundProgram;
    std::unique_ptr<QOpenGLShaderProgram> pointProgram;
    std::unique_ptr<QOpenGLShaderProgram> lineProgram;
    std::unique_ptr<QOpenGLShaderProgram> triangleProgram;
    GLuint backgroundVao = 0;
    float lineWidthRange[2] = {1.0f, 1.0f};
    std::unordered_map<quint64, GpuRep> cache;
    quint64 renderCount = 0;
    quint64 uploadCount = 0;
    quint64 frameCount = 0;
    qint64 drawnVertices = 0;

    // Mouse
    DragMode dragMode = DragMode::None;
    bool dragged = false;
    QPointF pressPos;
    QPointF lastPos;
    QPointer<ZYLVisGizmo> draggedGizmo;
    bool mousePointReported = false;
    bool interacting = false;
    QTimer settleTimer;

    GpuPrimitive Upload(const ZYLVisPrimitive &primitive, const ZYLVisOptions &options);
    GLuint ThinnedVao(GpuPrimitive &primitive, int stride);
    void Free(GpuRep &rep);
    GpuRep &Acquire(const ZYLVisRep &rep);
    void DropUnused();
};

GpuPrimitive ZYLStudioViewer::Data::Upload(const ZYLVisPrimitive &primitive, const ZYLVisOptions &options)
{
    GpuPrimitive gpu;
    gpu.kind = primitive.GetKind();
    gpu.options = options;
    const ZYLMathBoundingBox &box = primitive.GetBoundingBox();
    const std::vector<float> *positions = &primitive.GetVertexArray();
    std::vector<float> shifted;
    if (!box.IsEmpty()
        && box.GetCenter().ToVector().GetLength() > farFromOriginRatio * std::max(box.GetDiagonal().GetLength(), 1e-9)) {
        gpu.origin = box.GetCenter();
        shifted.reserve(positions->size());
        for (const ZYLMathPoint &p : primitive.GetVertices()) {
            const ZYLMathVector v = p - gpu.origin;
            shifted.insert(shifted.end(), {float(v.X()), float(v.Y()), float(v.Z())});
        }
        positions = &shifted;
    }
    gpu.box = ZYLMathBoundingBox(box.GetMin() - gpu.origin.ToVector(), box.GetMax() - gpu.origin.ToVector());
    const bool thinnable = gpu.kind == ZYLVisPrimitive::Kind::Points || gpu.kind == ZYLVisPrimitive::Kind::Polyline;
    if (thinnable && primitive.GetNumVertices() >= thinningMinVertices) {
        const std::vector<ZYLMathPoint> &vertices = primitive.GetVertices();
        double maxSquared = 0.0;
        for (size_t i = 1; i < vertices.size(); ++i)
            maxSquared = std::max(maxSquared, vertices[i].GetSquaredDistanceTo(vertices[i - 1]));
        gpu.maxStep = std::sqrt(maxSquared);
    }

    gl.glGenVertexArrays(1, &gpu.vao);
    gl.glBindVertexArray(gpu.vao);
    gl.glGenBuffers(3, gpu.buffers);
    gl.glBindBuffer(GL_ARRAY_BUFFER, gpu.buffers[0]);
    gl.glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(positions->size() * sizeof(float)), positions->data(), GL_STATIC_DRAW);
    gl.glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
    gl.glEnableVertexAttribArray(0);
    gpu.count = GLsizei(primitive.GetNumVertices());
    if (const auto *triangles = dynamic_cast<const ZYLVisTrianglePrimitive *>(&primitive)) {
        const std::vector<float> &normals = triangles->GetNormalArray();
        gl.glBindBuffer(GL_ARRAY_BUFFER, gpu.buffers[1]);
        gl.glBufferData(GL_ARRAY_BUFFER, GLsizeiptr(normals.size() * sizeof(float)), normals.data(), GL_STATIC_DRAW);
        gl.glVertexAttribPointer(1, 3, GL_FLOAT, GL_FALSE, 0, nullptr);
        gl.glEnableVertexAttribArray(1);
        const std::vector<std::uint32_t> &indices = triangles->GetIndices();
        gl.glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, gpu.buffers[2]);
        gl.glBufferData(GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr(indices.size() * sizeof(std::uint32_t)), indices.data(),
                        GL_STATIC_DRAW);
        gpu.count = GLsizei(indices.size());
    }
    gl.glBindVertexArray(0);
    gl.glBindBuffer(GL_ARRAY_BUFFER, 0);
    return gpu;
}

GLuint ZYLStudioViewer::Data::ThinnedVao(GpuPrimitive &primitive, int stride)
{
    for (const auto &[k, vao] : primitive.thinnedVaos)
        if (k == stride)
            return vao;
    // Only the attribute stride differs: the vertices are uploaded once, whatever is drawn.
    GLuint vao = 0;
    gl.glGenVertexArrays(1, &vao);
    gl.glBindVertexArray(vao);
    gl.glBindBuffer(GL_ARRAY_BUFFER, primitive.buffers[0]);
    gl.glVertexAttribPointer(0, 3, GL_FLOAT, GL_FALSE, GLsizei(stride * 3 * sizeof(float)), nullptr);
    gl.glEnableVertexAttribArray(0);
    gl.glBindVertexArray(0);
    gl.glBindBuffer(GL_ARRAY_BUFFER, 0);
    primitive.thinnedVaos.emplace_back(stride, vao);
    return vao;
}

void ZYLStudioViewer::Data::Free(GpuRep &rep)
{
    for (GpuPrimitive &primitive : rep.primitives) {
        gl.glDeleteBuffers(3, primitive.buffers);
        gl.glDeleteVertexArrays(1, &primitive.vao);
        for (const auto &[k, vao] : primitive.thinnedVaos)
            gl.glDeleteVertexArrays(1, &vao);
    }
    rep.primitives.clear();
}

GpuRep &ZYLStudioViewer::Data::Acquire(const ZYLVisRep &rep)
{
    auto [it, inserted] = cache.try_emplace(rep.GetId());
    GpuRep &gpu = it->second;
    if (inserted) {
        for (const ZYLVisRep::Item &item : rep.GetAllPrimitives())
            if (item.primitive->GetNumVertices() > 0)
                gpu.primitives.push_back(Upload(*item.primitive, *item.options));
        ++uploadCount;
    }
    gpu.lastUse = renderCount;
    return gpu;
}

void ZYLStudioViewer::Data::DropUnused()
{
    for (auto it = cache.begin(); it != cache.end();) {
        if (it->second.lastUse != renderCount) {
            Free(it->second);
            it = cache.erase(it);
        } else {
            ++it;
        }
    }
}

ZYLStudioViewer::ZYLStudioViewer(QWidget *parent) : QOpenGLWidget(parent), d(std::make_unique<Data>())
{
    initStudioViewerResources();
    QSurfaceFormat format = QSurfaceFormat::defaultFormat();
    format.setVersion(3, 3);
    format.setProfile(QSurfaceFormat::CoreProfile);
    // Not forward compatible: a forward-compatible core context refuses lines wider than one
    // pixel, which the display options ask for.
    format.setOption(QSurfaceFormat::DeprecatedFunctions);
    format.setDepthBufferSize(24);
    setFormat(format);
    setMouseTracking(true);
    setMinimumSize(64, 64);
    d->settleTimer.setSingleShot(true);
    d->settleTimer.setInterval(settleMilliseconds);
    connect(&d->settleTimer, &QTimer::timeout, this, [this] { SetInteracting(false); });
}

void ZYLStudioViewer::SetInteracting(bool interacting)
{
    if (interacting)
        d->settleTimer.start();
    else
        d->settleTimer.stop();
    if (d->interacting != interacting) {
        d->interacting = interacting;
        update();
    }
}

bool ZYLStudioViewer::IsInteracting() const
{
    return d->interacting;
}

ZYLStudioViewer::~ZYLStudioViewer()
{
    // The base class destroys the context after Data is gone: its handler must not run then.
    if (context())
        disconnect(context(), nullptr, this, nullptr);
    if (d->glReady) {
        makeCurrent();
        ReleaseGpuResources();
        doneCurrent();
    }
}

void ZYLStudioViewer::SetEnvironment(ZYLVisEnvironment *environment)
{
    if (d->environment == environment)
        return;
    if (d->environment)
        disconnect(d->environment, nullptr, this, nullptr);
    d->environment = environment;
    d->dragMode = DragMode::None;
    d->draggedGizmo = nullptr;
    if (environment) {
        connect(environment, &ZYLVisEnvironment::Changed, this, qOverload<>(&QWidget::update));
        connect(environment, &QObject::destroyed, this, qOverload<>(&QWidget::update));
        connect(environment, &ZYLVisEnvironment::MouseEvent, this, [this](const ZYLVisMouseEvent &event) {
            if (event.GetActionType() != ZYLVisMouseEvent::Moved)
                return;
            d->mousePointReported = true;
            emit MousePointChanged(event.GetContext().GetMousePoint());
        });
    }
    update();
}

ZYLVisEnvironment *ZYLStudioViewer::GetEnvironment() const
{
    return d->environment;
}

const ZYLStudioCamera &ZYLStudioViewer::GetCamera() const
{
    return d->camera;
}

void ZYLStudioViewer::SetCamera(const ZYLStudioCamera &camera)
{
    d->camera = camera;
    update();
}

ZYLMathBoundingBox ZYLStudioViewer::GetSceneBox() const
{
    ZYLMathBoundingBox box;
    if (d->environment) {
        box = d->environment->GetBoundingBox();
        for (const ZYLVisGizmo *gizmo : d->environment->GetGizmos()) {
            if (!gizmo->IsShown())
                continue;
            const ZYLMathPoint origin = gizmo->GetPosition().GetOrigin();
            const ZYLMathVector reach(gizmo->GetSize(), gizmo->GetSize(), gizmo->GetSize());
            box.Add(ZYLMathBoundingBox(origin - reach, origin + reach));
        }
    }
    return box;
}

void ZYLStudioViewer::FitAll()
{
    const ZYLMathBoundingBox box = GetSceneBox();
    d->camera.SetSceneBox(box);
    d->camera.Fit(box, QSizeF(size()));
    update();
}

void ZYLStudioViewer::SetStandardView(StandardView view)
{
    d->camera.SetStandardView(view);
    FitAll();
}

void ZYLStudioViewer::SetProjection(Projection projection)
{
    d->camera.SetProjection(projection);
    update();
}

ZYLStudioViewer::Projection ZYLStudioViewer::GetProjection() const
{
    return d->camera.GetProjection();
}

ZYLVisPickRay ZYLStudioViewer::GetRay(const QPointF &widgetPos) const
{
    // An orthographic ray starts on the near plane, which must lie before the current scene.
    ZYLStudioCamera camera = d->camera;
    camera.SetSceneBox(GetSceneBox());
    return camera.GetRay(widgetPos, QSizeF(size()), pickRadiusPixels);
}

QPointF ZYLStudioViewer::Project(const ZYLMathPoint &point) const
{
    return d->camera.Project(point, QSizeF(size()));
}

void ZYLStudioViewer::SetBackgroundColors(const QColor &top, const QColor &bottom)
{
    d->backgroundTop = top;
    d->backgroundBottom = bottom;
    update();
}

void ZYLStudioViewer::SetHighlightColor(const QColor &color)
{
    d->highlight = color;
    update();
}

QColor ZYLStudioViewer::GetDisplayColor(const QColor &color, bool selected, bool preselected) const
{
    // The fallback of the selection tint is the highlight's opposite hue.
    const QColor opposite = QColor::fromHsv((d->highlight.hue() + 180) % 360, 255, 255);
    const QColor shown = selected ? mixVisibly(color, d->highlight, opposite, 0.7) : color;
    return preselected ? mixVisibly(shown, Qt::white, Qt::black, 0.4) : shown;
}

quint64 ZYLStudioViewer::GetUploadCount() const
{
    return d->uploadCount;
}

int ZYLStudioViewer::GetCachedRepCount() const
{
    return int(d->cache.size());
}

qint64 ZYLStudioViewer::GetDrawnVertexCount() const
{
    return d->drawnVertices;
}

quint64 ZYLStudioViewer::GetFrameCount() const
{
    return d->frameCount;
}

static std::unique_ptr<QOpenGLShaderProgram> buildProgram(const QString &vertex, const QString &fragment)
{
    auto program = std::make_unique<QOpenGLShaderProgram>();
    const QString prefix = QStringLiteral(":/zylstudio/shaders/");
    if (!program->addShaderFromSourceFile(QOpenGLShader::Vertex, prefix + vertex)
        || !program->addShaderFromSourceFile(QOpenGLShader::Fragment, prefix + fragment) || !program->link()) {
        qWarning("ZYLStudioViewer: shader %s/%s: %s", qPrintable(vertex), qPrintable(fragment), qPrintable(program->log()));
        return nullptr;
    }
    return program;
}

void ZYLStudioViewer::initializeGL()
{
    // A new context (the widget moved to another window) starts without buffers.
    d->cache.clear();
    d->glReady = d->gl.initializeOpenGLFunctions();
    if (!d->glReady) {
        qWarning("ZYLStudioViewer: OpenGL 3.3 core is not available");
        return;
    }
    connect(context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] {
        makeCurrent();
        ReleaseGpuResources();
        doneCurrent();
    });
    d->backgroundProgram = buildProgram(QStringLiteral("background.vert"), QStringLiteral("background.frag"));
    d->pointProgram = buildProgram(QStringLiteral("plain.vert"), QStringLiteral("point.frag"));
    d->lineProgram = buildProgram(QStringLiteral("plain.vert"), QStringLiteral("flat.frag"));
    d->triangleProgram = buildProgram(QStringLiteral("lit.vert"), QStringLiteral("lit.frag"));
    d->gl.glGenVertexArrays(1, &d->backgroundVao);
    d->gl.glGetFloatv(GL_ALIASED_LINE_WIDTH_RANGE, d->lineWidthRange);
}

void ZYLStudioViewer::ReleaseGpuResources()
{
    if (!d->glReady)
        return;
    for (auto &[id, rep] : d->cache)
        d->Free(rep);
    d->cache.clear();
    d->gl.glDeleteVertexArrays(1, &d->backgroundVao);
    d->backgroundVao = 0;
    d->backgroundProgram.reset();
    d->pointProgram.reset();
    d->lineProgram.reset();
    d->triangleProgram.reset();
    d->glReady = false;
}

void ZYLStudioViewer::paintGL()
{
    ++d->frameCount;
    const QSizeF viewport(size());
    RenderScene((viewport * devicePixelRatioF()).toSize(), viewport);
}

QImage ZYLStudioViewer::RenderToImage(const QSize &size)
{
    if (!context())
        (void)grabFramebuffer(); // creates the context of a widget never shown
    if (!d->glReady)
        return {};
    if (size.isEmpty())
        return grabFramebuffer();
    makeCurrent();
    QOpenGLFramebufferObject framebuffer(size, QOpenGLFramebufferObject::Depth);
    framebuffer.bind();
    RenderScene(size, QSizeF(size));
    QImage image = framebuffer.toImage();
    d->gl.glBindFramebuffer(GL_FRAMEBUFFER, defaultFramebufferObject());
    doneCurrent();
    return image;
}

void ZYLStudioViewer::RenderScene(const QSize &pixelSize, const QSizeF &viewport)
{
    if (!d->glReady)
        return;
    QOpenGLFunctions_3_3_Core &gl = d->gl;
    ++d->renderCount;
    gl.glViewport(0, 0, pixelSize.width(), pixelSize.height());
    gl.glDepthMask(GL_TRUE);
    gl.glClearColor(0.0f, 0.0f, 0.0f, 1.0f);
    gl.glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    gl.glDisable(GL_DEPTH_TEST);
    gl.glDisable(GL_BLEND);
    if (d->backgroundProgram) {
        d->backgroundProgram->bind();
        d->backgroundProgram->setUniformValue("uTop", toVector3D(d->backgroundTop));
        d->backgroundProgram->setUniformValue("uBottom", toVector3D(d->backgroundBottom));
        gl.glBindVertexArray(d->backgroundVao);
        gl.glDrawArrays(GL_TRIANGLES, 0, 3);
    }

    d->camera.SetSceneBox(GetSceneBox());
    const ZYLStudioCamera &camera = d->camera;
    const bool perspective = camera.GetProjection() == Projection::Perspective;
    const float pixelRatio = viewport.height() > 0.0 ? float(pixelSize.height() / viewport.height()) : 1.0f;
    // Model units per device pixel: at unit depth in perspective, everywhere in orthographic.
    const double devicePixel = 2.0 * (perspective ? std::tan(0.5 * camera.GetFieldOfView()) : camera.GetHalfHeight())
                               / std::max(pixelSize.height(), 1);
    const double nearPlane = camera.GetClipRange().first;
    // Points and polylines far denser than the pixels are drawn through every k-th vertex:
    // the draw stage of a software renderer pays per vertex, and a dot every half sprite or
    // a line vertex every two pixels looks the same.
    auto strideFor = [&](const GpuPrimitive &primitive, const QMatrix4x4 &modelView) {
        if (primitive.maxStep <= 0.0)
            return 1;
        double pixel = devicePixel;
        if (perspective) {
            double nearest = std::numeric_limits<double>::infinity();
            for (int corner = 0; corner < 8; ++corner) {
                const ZYLMathPoint &low = primitive.box.GetMin();
                const ZYLMathPoint &high = primitive.box.GetMax();
                const QVector3D eye = modelView.map(QVector3D(float(corner & 1 ? high.X() : low.X()),
                                                              float(corner & 2 ? high.Y() : low.Y()),
                                                              float(corner & 4 ? high.Z() : low.Z())));
                nearest = std::min(nearest, double(-eye.z()));
            }
            pixel *= std::max(nearest, nearPlane);
        }
        const double allowedPixels = (primitive.kind == ZYLVisPrimitive::Kind::Points
                                          ? 0.5 * primitive.options.GetPointSize() * pixelRatio
                                          : thinnedLineStepPixels * pixelRatio)
                                     * (d->interacting ? interactiveThinning : 1.0);
        const double most = allowedPixels * pixel / primitive.maxStep;
        int stride = 1;
        while (2 * stride <= most && 2 * stride <= thinningMaxStride)
            stride *= 2;
        return stride;
    };
    const QMatrix4x4 projection = camera.GetProjectionMatrix(viewport);
    std::vector<DrawItem> items;
    auto addRep = [&](const ZYLVisRep &rep, const ZYLMathAxis &frame, int priority, bool selected, bool preselected) {
        for (GpuPrimitive &primitive : d->Acquire(rep).primitives) {
            const ZYLVisOptions &options = primitive.options;
            DrawItem item;
            item.priority = priority == gizmoPriority ? priority : options.GetPriority();
            item.pass = !options.IsDepthEnabled()          ? Pass::OnTop
                        : options.GetTransparency() > 0.0 ? Pass::Transparent
                                                           : Pass::Opaque;
            item.primitive = &primitive;
            item.modelView = camera.GetModelViewMatrix(frame, primitive.origin);
            // Courses off screen while working close up cost the software renderer nothing.
            if (IsOutsideView(primitive.box, projection * item.modelView))
                continue;
            item.stride = strideFor(primitive, item.modelView);
            item.color = GetDisplayColor(options.GetColor(), selected, preselected);
            item.color.setAlphaF(float(1.0 - options.GetTransparency()));
            items.push_back(std::move(item));
        }
    };
    if (d->environment) {
        const QSet<ZYLVisObject *> selection = d->environment->GetVisualizationSelection();
        const QSet<ZYLVisObject *> preselection = d->environment->GetPreSelectedObjects();
        for (ZYLVisVirtualObject *object : d->environment->GetVirtualObjects()) {
            const ZYLVisRep *rep = object->GetRep();
            if (!rep)
                continue;
            if (!object->IsVisible()) {
                // Keep the buffers of hidden objects: showing them again must not upload.
                if (auto it = d->cache.find(rep->GetId()); it != d->cache.end())
                    it->second.lastUse = d->renderCount;
                continue;
            }
            addRep(*rep, object->GetPosition(), 0, selection.contains(object), preselection.contains(object));
        }
        for (const ZYLVisGizmo *gizmo : d->environment->GetGizmos())
            if (gizmo->IsShown() && gizmo->GetRep())
                addRep(*gizmo->GetRep(), gizmo->GetPosition(), gizmoPriority, false, false);
    }
    d->DropUnused();

    std::stable_sort(items.begin(), items.end(), [](const DrawItem &a, const DrawItem &b) {
        return a.priority != b.priority ? a.priority < b.priority : a.pass < b.pass;
    });

    d->drawnVertices = 0;
    gl.glEnable(GL_PROGRAM_POINT_SIZE);
    gl.glEnable(GL_BLEND);
    // The framebuffer's alpha stays opaque: the widget is composed, and images saved, with it.
    gl.glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    QOpenGLShaderProgram *bound = nullptr;
    for (size_t i = 0; i < items.size(); ++i) {
        const DrawItem &item = items[i];
        GpuPrimitive &primitive = *item.primitive;
        // Each priority band starts on a fresh depth buffer so that it lies over lower ones.
        if (i > 0 && item.priority != items[i - 1].priority)
            gl.glClear(GL_DEPTH_BUFFER_BIT);
        if (item.pass == Pass::OnTop)
            gl.glDisable(GL_DEPTH_TEST);
        else
            gl.glEnable(GL_DEPTH_TEST);
        gl.glDepthMask(item.pass == Pass::Opaque ? GL_TRUE : GL_FALSE);

        QOpenGLShaderProgram *program = nullptr;
        GLenum mode = GL_POINTS;
        switch (primitive.kind) {
        case ZYLVisPrimitive::Kind::Points:
            program = d->pointProgram.get();
            break;
        case ZYLVisPrimitive::Kind::Polyline:
            program = d->lineProgram.get();
            mode = GL_LINE_STRIP;
            break;
        case ZYLVisPrimitive::Kind::Segments:
            program = d->lineProgram.get();
            mode = GL_LINES;
            break;
        case ZYLVisPrimitive::Kind::Triangles:
            program = d->triangleProgram.get();
            mode = GL_TRIANGLES;
            break;
        }
        if (!program)
            continue;
        if (program != bound) {
            program->bind();
            program->setUniformValue("uProjection", projection);
            if (program == d->triangleProgram.get())
                program->setUniformValue("uPerspective", perspective);
            bound = program;
        }
        program->setUniformValue("uModelView", item.modelView);
        program->setUniformValue("uColor", item.color);
        if (mode == GL_POINTS)
            program->setUniformValue("uPointSize", float(primitive.options.GetPointSize()) * pixelRatio);
        else if (mode != GL_TRIANGLES)
            gl.glLineWidth(std::clamp(float(primitive.options.GetLineThickness()) * pixelRatio, d->lineWidthRange[0],
                                      d->lineWidthRange[1]));
        GLuint vao = primitive.vao;
        GLsizei count = primitive.count;
        if (item.stride > 1) {
            vao = d->ThinnedVao(primitive, item.stride);
            count = (count - 1) / item.stride + 1;
        }
        gl.glBindVertexArray(vao);
        if (mode == GL_TRIANGLES)
            gl.glDrawElements(mode, count, GL_UNSIGNED_INT, nullptr);
        else
            gl.glDrawArrays(mode, 0, count);
        d->drawnVertices += count;
        const GLint lastDrawn = (count - 1) * item.stride;
        if (mode == GL_LINE_STRIP && lastDrawn < primitive.count - 1) {
            // A thinned polyline still ends at its last vertex: its tail is drawn in full.
            gl.glBindVertexArray(primitive.vao);
            gl.glDrawArrays(mode, lastDrawn, primitive.count - lastDrawn);
            d->drawnVertices += primitive.count - lastDrawn;
        }
    }
    gl.glBindVertexArray(0);
    if (bound)
        bound->release();
    gl.glDisable(GL_BLEND);
    gl.glDepthMask(GL_TRUE);
}

void ZYLStudioViewer::mousePressEvent(QMouseEvent *event)
{
    d->pressPos = d->lastPos = event->position();
    d->dragged = false;
    d->dragMode = DragMode::None;
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    if (event->button() == Qt::MiddleButton || (event->button() == Qt::LeftButton && shift)) {
        d->dragMode = DragMode::Pan;
    } else if (event->button() == Qt::LeftButton) {
        d->dragMode = DragMode::Orbit;
        if (d->environment) {
            const ZYLVisPickRay ray = GetRay(event->position());
            for (ZYLVisGizmo *gizmo : d->environment->GetGizmos()) {
                if (gizmo->IsShown() && gizmo->BeginDrag(ray)) {
                    d->dragMode = DragMode::Gizmo;
                    d->draggedGizmo = gizmo;
                    break;
                }
            }
        }
    }
    event->accept();
}

void ZYLStudioViewer::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF pos = event->position();
    if (d->dragMode == DragMode::None) {
        if (!d->environment)
            return;
        const ZYLVisPickRay ray = GetRay(pos);
        d->mousePointReported = false;
        d->environment->MouseMove(ray);
        if (!d->mousePointReported && d->environment) {
            // The environment reports mouse points only when asked to deliver moves.
            const ZYLVisPickResult hit = d->environment->Pick(ray);
            const ZYLMathBoundingBox box = d->environment->GetBoundingBox();
            const ZYLMathPoint centre = box.IsEmpty() ? d->camera.GetTarget() : box.GetCenter();
            emit MousePointChanged(hit.IsHit() ? hit.point : ray.GetPointAt(ray.GetParameterOf(centre)));
        }
        return;
    }
    if (!d->dragged && (pos - d->pressPos).manhattanLength() < clickTolerance)
        return;
    d->dragged = true;
    const QPointF delta = pos - d->lastPos;
    d->lastPos = pos;
    switch (d->dragMode) {
    case DragMode::Orbit:
        d->camera.Orbit(delta.x(), delta.y(), QSizeF(size()));
        SetInteracting(true);
        update();
        break;
    case DragMode::Pan:
        d->camera.Pan(delta.x(), delta.y(), QSizeF(size()));
        SetInteracting(true);
        update();
        break;
    case DragMode::Gizmo:
        if (d->draggedGizmo)
            d->draggedGizmo->Drag(GetRay(pos)); // the environment asks for the redraw
        break;
    case DragMode::None:
        break;
    }
}

void ZYLStudioViewer::mouseReleaseEvent(QMouseEvent *event)
{
    const DragMode mode = d->dragMode;
    d->dragMode = DragMode::None;
    if (mode == DragMode::Gizmo && d->draggedGizmo)
        d->draggedGizmo->EndDrag();
    d->draggedGizmo = nullptr;
    if (mode == DragMode::Orbit || mode == DragMode::Pan)
        SetInteracting(false);
    if (!d->dragged && event->button() == Qt::LeftButton && mode != DragMode::Gizmo && d->environment)
        d->environment->MouseClick(GetRay(event->position()), event->modifiers());
    d->dragged = false;
}

void ZYLStudioViewer::wheelEvent(QWheelEvent *event)
{
    const double notches = event->angleDelta().y() / 120.0;
    if (notches == 0.0)
        return;
    d->camera.Zoom(std::pow(wheelZoomFactor, notches), event->position(), QSizeF(size()));
    SetInteracting(true);
    update();
    event->accept();
}

void ZYLStudioViewer::leaveEvent(QEvent *event)
{
    if (d->environment && d->dragMode == DragMode::None)
        d->environment->MouseLeave();
    QOpenGLWidget::leaveEvent(event);
}
