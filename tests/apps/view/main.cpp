#include <gtest/gtest.h>

#include <QApplication>
#include <QQuickWindow>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::OpenGL);
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
