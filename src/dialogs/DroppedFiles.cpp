#include "dialogs/DroppedFiles.h"

#include <QFileInfo>
#include <QSysInfo>
#include <QUrl>

namespace boreforge {

namespace {

// Some file managers name the machine, as the drag and drop protocol of X11 asks them to.
bool IsHere(const QUrl& url) {
    const QString host = url.host();
    return url.isLocalFile() &&
           (host.isEmpty() || host == "localhost" || host == QSysInfo::machineHostName().toLower());
}

}  // namespace

QStringList FilesOf(const QMimeData& dragged) {
    QStringList files;
    for (const QUrl& url : dragged.urls()) {
        const QString path = IsHere(url) ? url.path(QUrl::FullyDecoded) : QString();
        if (QFileInfo(path).isFile()) files += path;
    }
    return files;
}

bool AcceptAsCopy(QDropEvent& event, bool wanted) {
    const bool mayCopy = event.possibleActions() & (Qt::CopyAction | Qt::LinkAction);
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(wanted && mayCopy);
    return event.isAccepted();
}

}  // namespace boreforge
