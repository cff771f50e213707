#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>

using TabulaControl::Tabula;

namespace {

void fill(Tabula& grid)
{
    grid.setAutoRedraw(false);
    grid.setCols(6);
    grid.setRows(12);
    for (int32_t r = 1; r <= grid.Rows(); ++r) {
        grid.setTextMatrix(r, 0, QString::number(r));
        for (int32_t c = 1; c <= grid.Cols(); ++c)
            grid.setTextMatrix(r, c, QStringLiteral("R%1 C%2").arg(r).arg(c));
    }
    for (int32_t c = 1; c <= grid.Cols(); ++c)
        grid.setTextMatrix(0, c, QStringLiteral("Column %1").arg(c));
    grid.setAutoRedraw(true);
}

bool headless()
{
    const QString platform = QGuiApplication::platformName();
    return platform == QLatin1String("offscreen") || platform == QLatin1String("minimal");
}

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Tabula demo"));
    auto* grid = new Tabula(&window);
    grid->setObjectName(QStringLiteral("grid"));
    window.setCentralWidget(grid);
    window.resize(640, 360);
    fill(*grid);
    window.show();

    if (!headless())
        return app.exec();

    QApplication::processEvents();
    const QString path = QDir::current().absoluteFilePath(QStringLiteral("tabula-demo.png"));
    if (!window.grab().save(path)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(path));
        return 1;
    }
    std::printf("No display: wrote a screenshot of the demo window to %s\n", qPrintable(path));
    return 0;
}
