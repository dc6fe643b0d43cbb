#include "dialogs/DroppedFiles.h"

#include <QFileInfo>
#include <QSysInfo>
#include <QUrl>

namespace boreforge {

namespace {

// The path of a local file, or of one that another computer shares with Windows. The drag and drop protocol
// of X11 asks file managers to put this machine's name into the address; some do.
QString PathOf(QUrl url) {
    if (url.host() == "localhost" || url.host() == QSysInfo::machineHostName().toLower()) url.setHost("");
    return url.toLocalFile();
}

}  // namespace

QStringList FilesOf(const QMimeData& dragged) {
    QStringList files;
    for (const QUrl& url : dragged.urls()) {
        const QString path = PathOf(url);
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
