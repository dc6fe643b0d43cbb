#include "view/PictureFile.h"

#include <QBuffer>
#include <QByteArray>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QQuickGraphicsDevice>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickRenderTarget>
#include <QQuickView>

#include "base/FileTags.h"
#include "platform/OutputFile.h"

namespace boreforge {

QImage DrawPicture(ViewScene& scene, const QSize& size) {
    QOpenGLContext context;
    context.setFormat(QSurfaceFormat::defaultFormat());
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.create() || !context.makeCurrent(&surface)) return {};
    QOpenGLFramebufferObject frame(size, QOpenGLFramebufferObject::CombinedDepthStencil);

    QQuickRenderControl control;
    QQuickView view(QUrl(), &control);
    view.setGraphicsDevice(QQuickGraphicsDevice::fromOpenGLContext(&context));
    view.setInitialProperties(
        {{"scene", QVariant::fromValue<QObject*>(&scene.properties)}, {"picture", true}});
    view.setSource(QUrl(QStringLiteral("qrc:/view/Viewer.qml")));  // reports errors itself
    if (!view.rootObject() || !control.initialize()) return {};
    view.rootObject()->setSize(size);
    view.setRenderTarget(QQuickRenderTarget::fromOpenGLTexture(frame.texture(), size));
    control.polishItems();
    control.beginFrame();
    control.sync();
    control.render();
    control.endFrame();
    context.makeCurrent(&surface);
    return frame.toImage(true);
}

Outcome SavePicture(const std::string& path, QImage image) {
    image = image.convertToFormat(QImage::Format_RGB888);
    image.setDotsPerMeterX(3780);  // 96 dpi on every machine, so that the bytes are the same
    image.setDotsPerMeterY(3780);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (image.isNull() || !image.save(&buffer, "PNG"))
        return Failure{.headline = "Error - The Picture Can't Be Made!"};
    const auto* const start = reinterpret_cast<const std::uint8_t*>(bytes.constData());
    SaveRules rules;
    rules.mayReplace = [](std::string_view beginning) { return MayReplace(beginning, ""); };
    return SaveWholeFile(path, {start, static_cast<std::size_t>(bytes.size())}, rules)
        .With({.headline = "Error - The Picture Can't Be Written!",
               .path = path,
               .consequence = "No picture was written."});
}

}  // namespace boreforge
