// A window from which a file can be dragged: drag_source FILE. Prints "taken" as soon as the window under the
// mouse would take it. Ends when the target has finished with the file: with 0 if it copied it.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include <cstdio>

class Source : public QWidget {
    void mousePressEvent(QMouseEvent*) override {
        auto* const dragged = new QMimeData;
        dragged->setUrls({QUrl::fromLocalFile(QApplication::arguments().last())});
        auto* const drag = new QDrag(this);
        drag->setMimeData(dragged);
        connect(drag, &QDrag::actionChanged, [](Qt::DropAction action) {
            if (action == Qt::CopyAction) std::puts("taken"), std::fflush(stdout);
        });
        // The target still fetches the file's name after the drop. Qt deletes the drag when it has finished.
        connect(drag, &QObject::destroyed, [this] { QApplication::exit(done_ == Qt::CopyAction ? 0 : 1); });
        done_ = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    }

    Qt::DropAction done_ = Qt::IgnoreAction;
};

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    Source source;
    source.setWindowTitle("Drag source");
    source.setGeometry(0, 0, 100, 100);
    source.show();
    return QApplication::exec();
}
