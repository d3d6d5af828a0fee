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
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
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

/// One primitive in GPU buffers.
struct GpuPrimitive {
    ZYLVisPrimitive::Kind kind = ZYLVisPrimitive::Kind::Points;
    ZYLVisOptions options;
    GLuint vao = 0;
    GLuint buffers[3] = {0, 0, 0}; // positions, normals, indices
    GLsizei count = 0;
    /// The point of the primitive's coordinates that the uploaded positions are relative to.
    ZYLMathPoint origin;
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
    const GpuPrimitive *primitive = nullptr;
    QMatrix4x4 modelView;
    QColor color;
};

enum class DragMode { None, Orbit, Pan, Gizmo };

QVector3D toVector3D(const QColor &color)
{
    return {float(color.redF()), float(color.greenF()), float(color.blueF())};
}

QColor mix(const QColor &a, const QColor &b, double t)
{
    return QColor::fromRgbF(float(a.redF() + (b.redF() - a.redF()) * t), float(a.greenF() + (b.greenF() - a.greenF()) * t),
                            float(a.blueF() + (b.blueF() - a.blueF()) * t));
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

    // Mouse
    DragMode dragMode = DragMode::None;
    bool dragged = false;
    QPointF pressPos;
    QPointF lastPos;
    QPointer<ZYLVisGizmo> draggedGizmo;
    bool mousePointReported = false;

    GpuPrimitive Upload(const ZYLVisPrimitive &primitive, const ZYLVisOptions &options);
    void Free(GpuRep &rep);
    const GpuRep &Acquire(const ZYLVisRep &rep);
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

void ZYLStudioViewer::Data::Free(GpuRep &rep)
{
    for (GpuPrimitive &primitive : rep.primitives) {
        gl.glDeleteBuffers(3, primitive.buffers);
        gl.glDeleteVertexArrays(1, &primitive.vao);
    }
    rep.primitives.clear();
}

const GpuRep &ZYLStudioViewer::Data::Acquire(const ZYLVisRep &rep)
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
}

ZYLStudioViewer::~ZYLStudioViewer()
{
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

void ZYLStudioViewer::UpdateSceneBox()
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
    d->camera.SetSceneBox(box);
}

void ZYLStudioViewer::FitAll()
{
    UpdateSceneBox();
    d->camera.Fit(d->environment ? d->environment->GetBoundingBox() : ZYLMathBoundingBox(), QSizeF(size()));
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
    const_cast<ZYLStudioViewer *>(this)->UpdateSceneBox();
    return d->camera.GetRay(widgetPos, QSizeF(size()), pickRadiusPixels);
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
    QColor shown = selected ? mix(color, d->highlight, 0.7) : color;
    return preselected ? mix(shown, Qt::white, 0.4) : shown;
}

quint64 ZYLStudioViewer::GetUploadCount() const
{
    return d->uploadCount;
}

int ZYLStudioViewer::GetCachedRepCount() const
{
    return int(d->cache.size());
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
    d->pointProgram = buildProgram(QStringLiteral("geometry.vert"), QStringLiteral("point.frag"));
    d->lineProgram = buildProgram(QStringLiteral("geometry.vert"), QStringLiteral("flat.frag"));
    d->triangleProgram = buildProgram(QStringLiteral("geometry.vert"), QStringLiteral("lit.frag"));
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

void ZYLStudioViewer::resizeGL(int, int) {}

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

    UpdateSceneBox();
    const ZYLStudioCamera &camera = d->camera;
    std::vector<DrawItem> items;
    auto addRep = [&](const ZYLVisRep &rep, const ZYLMathAxis &frame, int priority, bool selected, bool preselected) {
        for (const GpuPrimitive &primitive : d->Acquire(rep).primitives) {
            const ZYLVisOptions &options = primitive.options;
            DrawItem item;
            item.priority = priority == gizmoPriority ? priority : options.GetPriority();
            item.pass = !options.IsDepthEnabled()          ? Pass::OnTop
                        : options.GetTransparency() > 0.0 ? Pass::Transparent
                                                           : Pass::Opaque;
            item.primitive = &primitive;
            item.modelView = camera.GetModelViewMatrix(frame, primitive.origin);
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

    const QMatrix4x4 projection = camera.GetProjectionMatrix(viewport);
    const bool perspective = camera.GetProjection() == Projection::Perspective;
    const float pixelRatio = viewport.height() > 0.0 ? float(pixelSize.height() / viewport.height()) : 1.0f;
    gl.glEnable(GL_PROGRAM_POINT_SIZE);
    gl.glEnable(GL_BLEND);
    gl.glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    QOpenGLShaderProgram *bound = nullptr;
    for (size_t i = 0; i < items.size(); ++i) {
        const DrawItem &item = items[i];
        const GpuPrimitive &primitive = *item.primitive;
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
        gl.glBindVertexArray(primitive.vao);
        if (mode == GL_TRIANGLES)
            gl.glDrawElements(mode, primitive.count, GL_UNSIGNED_INT, nullptr);
        else
            gl.glDrawArrays(mode, 0, primitive.count);
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
            const ZYLMathPoint centre = d->camera.GetTarget();
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
        update();
        break;
    case DragMode::Pan:
        d->camera.Pan(delta.x(), delta.y(), QSizeF(size()));
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
    update();
    event->accept();
}

void ZYLStudioViewer::leaveEvent(QEvent *event)
{
    if (d->environment && d->dragMode == DragMode::None)
        d->environment->MouseLeave();
    QOpenGLWidget::leaveEvent(event);
}
