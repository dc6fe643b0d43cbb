// Files that are dragged from a file manager.
#pragma once

#include <QDropEvent>
#include <QMimeData>
#include <QStringList>

namespace boreforge {

// The paths of the dragged files that are on this machine and exist.
QStringList FilesOf(const QMimeData& dragged);

// Accepts a drag or a drop as a copy, if `wanted` and if the file manager offers a copy or a link; else
// ignores it. After a move the file manager might remove the file. Returns whether it was accepted.
bool AcceptAsCopy(QDropEvent& event, bool wanted);

}  // namespace boreforge
