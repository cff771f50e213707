#include "FileMenu.h"

#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QMainWindow>
#include <QMenuBar>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QSettings>

using TabulaControl::Tabula;

namespace {

const QString CsvFilter = QStringLiteral("CSV files (*.csv *.txt);;All files (*)");

void openCsv(QMainWindow& window, Tabula& grid)
{
    const QString path = QFileDialog::getOpenFileName(&window, QStringLiteral("Open CSV"), {}, CsvFilter);
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return void(QMessageBox::warning(&window, QStringLiteral("Open CSV"), file.errorString()));
    QProgressDialog progress(QStringLiteral("Loading %1").arg(path), QStringLiteral("Cancel"), 0, 1000, &window);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(300);
    const auto reported = QObject::connect(&grid, &Tabula::csvProgress, &progress, [&](qint64 done, qint64 total) {
        progress.setValue(total > 0 ? static_cast<int>(done * 1000 / total) : 0);
    });
    QObject::connect(&progress, &QProgressDialog::canceled, &grid, &Tabula::cancelCsv);
    try {
        grid.loadCsv(file);
    } catch (const TabulaControl::ComponentError& error) {
        QMessageBox::warning(&window, QStringLiteral("Open CSV"), error.Description);
    }
    QObject::disconnect(reported);
}

void saveCsv(QMainWindow& window, Tabula& grid)
{
    const QString path = QFileDialog::getSaveFileName(&window, QStringLiteral("Save CSV"), {}, CsvFilter);
    if (path.isEmpty())
        return;
    QFile file(path);
    try {
        if (!file.open(QIODevice::WriteOnly))
            return void(QMessageBox::warning(&window, QStringLiteral("Save CSV"), file.errorString()));
        grid.saveCsv(file);
    } catch (const TabulaControl::ComponentError& error) {
        QMessageBox::warning(&window, QStringLiteral("Save CSV"), error.Description);
    }
}

void printPreview(QMainWindow& window, Tabula& grid)
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog preview(&printer, &window);
    QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &grid,
                     [&grid](QPrinter* target) { grid.print(target); });
    preview.exec();
}

// Following the desktop needs colours that name system colours: the
// window's base colour for cells and the background, button text for text.
void followDesktop(Tabula& grid, bool on)
{
    grid.setFollowPalette(on);
    if (!on)
        return;
    grid.setBackColor(0x80000005);
    grid.setBackColorBkg(0x8000000C);
    grid.setForeColor(0x80000008);
    grid.setGridLineColor(0x80000010);
}

}  // namespace

void addFileMenu(QMainWindow& window, Tabula& grid, QSettings& settings)
{
    QMenu* menu = window.menuBar()->addMenu(QStringLiteral("&File"));
    menu->addAction(QStringLiteral("&Open CSV..."), &grid, [&window, &grid] { openCsv(window, grid); });
    menu->addAction(QStringLiteral("&Save CSV..."), &grid, [&window, &grid] { saveCsv(window, grid); });
    menu->addAction(QStringLiteral("Print Pre&view..."), &grid, [&window, &grid] { printPreview(window, grid); });
    QAction* follow = menu->addAction(QStringLiteral("Follow the &desktop's colours"));
    follow->setCheckable(true);
    follow->setChecked(grid.followPalette());
    QObject::connect(follow, &QAction::toggled, &grid, [&grid](bool on) { followDesktop(grid, on); });

    grid.restoreLayout(settings.value(QStringLiteral("layout")).toByteArray());
    QObject::connect(qApp, &QApplication::aboutToQuit, &grid,
                     [&grid, &settings] { settings.setValue(QStringLiteral("layout"), grid.saveLayout()); });
}
