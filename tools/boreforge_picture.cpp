// boreforge-picture: checks a finished object and draws a picture of it, with no window and no display.
#include <QBuffer>
#include <QByteArray>
#include <QImage>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Message.h"
#include "export3ds/Read3DSObject.h"
#include "job/mMain.h"
#include "picture_camera.h"
#include "picture_options.h"
#include "picture_path.h"
#include "picture_render.h"
#include "platform/OutputFile.h"
#include "tracing/mZR_TraceTrack.h"

using namespace boreforge;

namespace {

bool PictureIsApart(const PictureOptions& options) {
    for (const std::string& input : {options.Object, options.Track}) {
        if (input.empty() || !SameFile(options.Picture, input)) continue;
        ShowError("Error - The Picture Would Replace " + input + "!");
        return false;
    }
    return true;
}

bool LoadObject(const std::string& path, Object3DS& object) {
    Bytes file;
    if (!ReadWholeFile(path, file)) {
        ShowError("Error - The 3DS Object Can't Be Read!\n\n" + path);
        return false;
    }
    ObjectDamage damage;
    const bool good = Read3DSObject(file, object, damage);
    if (good && !object.Faces.empty()) return true;
    ShowError("Error - Invalid 3DS Object!\n\n" + path + "\n" +
              (good ? "It has no faces." : DamageText(damage)));
    return false;
}

bool LoadPath(const std::string& track, const Object3DS& object, TrackPath& path) {
    if (track.empty()) return true;
    if (!OpenTrack(track)) return false;
    if (!TrackTraced) {
        ShowError("Error - The Track's Path Can't Be Followed!");
        return false;
    }
    path = PathOfTrace();
    FindCover(path, object);
    return true;
}

bool SavePicture(const std::string& path, const std::vector<std::uint8_t>& pixels, PictureSize size) {
    QImage image(pixels.data(), size.Width, size.Height, 3 * size.Width, QImage::Format_RGB888);
    image.setDotsPerMeterX(3780);  // not the screen's, which there may not be
    image.setDotsPerMeterY(3780);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool made = image.save(&buffer, "PNG");
    const auto* const start = reinterpret_cast<const std::uint8_t*>(bytes.constData());
    if (made && SaveWholeFile(path, FileKind::Other, {start, static_cast<std::size_t>(bytes.size())}))
        return true;
    if (made)
        ShowError(FailureMessage("Error - The Picture Can't Be Written!", path, "No picture was written."));
    else
        ShowError("Error - The Picture Can't Be Made!");
    return false;
}

int MakePicture(const PictureOptions& options) {
    Object3DS object;
    TrackPath path;
    if (!PictureIsApart(options) || !LoadObject(options.Object, object) ||
        !LoadPath(options.Track, object, path))
        return kFailed;
    PictureCamera camera;
    std::string reason;
    if (!AimCamera(options.View, options.Size, object, path, camera, reason)) {
        ShowError("Error - There Is No Such View!\n\n" + reason);
        return kFailed;
    }
    const std::vector<RailPiece> rails = RailsOf(path);
    const bool inside = options.View == PictureView::Inside;
    const auto pixels = RenderPicture({object, rails, camera, inside, PortalsOf(path)});
    return SavePicture(options.Picture, pixels, options.Size) ? kDone : kFailed;
}

}  // namespace

int main(int count, char** arguments) {
    PictureOptions options;
    CLI::App application("", "boreforge-picture");
    AddPictureOptions(application, options);
    return RunProgram(application, count, arguments, [&] { return MakePicture(options); });
}
