#include "demo/DatabaseDemo.h"
#include "demo/EditMenu.h"
#include "demo/FileMenu.h"

#include <TabulaControl/SettingsPropertyBag.h>
#include <TabulaControl/Tabula.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSettings>
#include <QScrollBar>
#include <QSplitter>
#include <QVBoxLayout>

#include <cstdio>
#include <functional>
#include <iterator>

using TabulaControl::OleColor;
using TabulaControl::SettingsPropertyBag;
using TabulaControl::StdFont;
using TabulaControl::Tabula;

namespace {

// Colours are given as 0x00BBGGRR.
constexpr OleColor rgb(int r, int g, int b)
{
    return static_cast<OleColor>(r) | (static_cast<OleColor>(g) << 8) | (static_cast<OleColor>(b) << 16);
}

struct Order {
    const char* rowData;  // tab-separated cells of columns 1..6
    OleColor back = 0;
    OleColor fore = 0;
    bool ownColours = false;
};

const Order orders[] = {
    {"Walnut desk\t2\t349.00\t698.00\t1\tDelivered"},
    {"Oak bookshelf\t1\t219.50\t219.50\t1\tDelivered"},
    {"Reading lamp\t4\t39.90\t159.60\t0\tBack-ordered", rgb(253, 226, 222), rgb(156, 28, 28), true},
    {"Linen armchair\t1\t489.00\t489.00\t1\tDelivered"},
    {"Wool rug 2x3 m\t1\t310.00\t310.00\t0\tIn transit"},
    {"Side table\t3\t74.00\t222.00\t1\tDelivered"},
    {"Ceramic vase\t6\t18.50\t111.00\t1\tGift wrapped", rgb(224, 243, 228), rgb(24, 104, 48), true},
    {"Desk chair\t2\t129.00\t258.00\t0\tAwaiting stock"},
    {"Wall clock\t1\t45.00\t45.00\t1\tDelivered"},
    {"Bench, ash\t1\t260.00\t260.00\t0\tIn transit"},
    {"Curtains (pair)\t2\t58.00\t116.00\t1\tDelivered"},
    {"Coat stand\t1\t67.00\t67.00\t1\tDelivered"},
    {"Mirror, round\t1\t95.00\t95.00\t0\tReturned", rgb(253, 226, 222), rgb(156, 28, 28), true},
    {"Cushion set\t4\t22.00\t88.00\t1\tDelivered"},
    {"Plant stand\t2\t34.50\t69.00\t1\tDelivered"},
    {"Throw blanket\t3\t41.00\t123.00\t0\tIn transit"},
};

constexpr int32_t ShippedColumn = 5;

// Column captions with alignment marks; trailing blanks widen a column.
// After the ";" come the captions of the header column, one per order.
QString formatString()
{
    QString format = QStringLiteral(
        "<Item                        |^Qty   |>Unit price  |>Total        |^Shipped |<Status                       ");
    for (size_t i = 0; i < std::size(orders); ++i)
        format += QStringLiteral(";#%1  ").arg(1001 + i);
    return format;
}

std::shared_ptr<StdFont> font(const char* name, float size, bool bold)
{
    auto f = std::make_shared<StdFont>();
    f->Name = QString::fromLatin1(name);
    f->Size = size;
    f->Bold = bold;
    return f;
}

void style(Tabula& grid)
{
    grid.setBorderStyle(TabulaControl::Single);
    grid.setFixedStyle(TabulaControl::Flat);
    grid.setBackColorFixed(rgb(222, 230, 240));
    grid.setForeColorFixed(rgb(30, 48, 80));
    grid.setGridLineColor(rgb(200, 208, 220));
    grid.setBackColor(rgb(255, 255, 255));
    grid.setForeColor(rgb(36, 36, 36));
    grid.setBackColorAlt(rgb(244, 247, 252));
    grid.setUseBackColorAlt(true);
    grid.setBackColorBkg(rgb(236, 238, 242));
    grid.setFont(font("DejaVu Sans", 8.5f, false));
    grid.setFontFixed(font("DejaVu Sans", 8.5f, true));
}

void fill(Tabula& grid)
{
    grid.setAutoRedraw(false);
    grid.setCols(6);
    grid.Clear();
    grid.setColMask(ShippedColumn, TabulaControl::checkmark);
    for (const Order& order : orders) {
        const QString data = QString::fromUtf8(order.rowData);
        if (order.ownColours)
            grid.AddItem(data, order.back, order.fore);
        else
            grid.AddItem(data);
    }
    grid.setFormatString(formatString());
    for (int32_t r = 0; r <= grid.Rows(); ++r)
        grid.setRowHeight(r, r == 0 ? 20 : 17);
    grid.setAutoRedraw(true);
}

// Shows every event the grid raises, newest last.
void logEvents(Tabula& grid, QPlainTextEdit& log)
{
    using TabulaControl::TabulaEvents;
    auto add = [&log](const QString& line) { log.appendPlainText(line); };
    auto mouse = [add](const char* name) {
        return [add, name](int16_t b, int16_t s, float x, float y) {
            add(QStringLiteral("%1 button=%2 shift=%3 x=%4 y=%5").arg(QLatin1String(name)).arg(b).arg(s).arg(x).arg(y));
        };
    };
    TabulaEvents* events = grid.events();
    QObject::connect(events, &TabulaEvents::Click, [add] { add("Click"); });
    QObject::connect(events, &TabulaEvents::DblClick, [add] { add("DblClick"); });
    QObject::connect(events, &TabulaEvents::Scroll, [add, &grid] {
        add(QStringLiteral("Scroll top=%1 left=%2").arg(grid.TopRow()).arg(grid.LeftCol()));
    });
    QObject::connect(events, &TabulaEvents::MouseDown, mouse("MouseDown"));
    QObject::connect(events, &TabulaEvents::MouseUp, mouse("MouseUp"));
    QObject::connect(events, &TabulaEvents::KeyDown,
                     [add](int16_t k, int16_t s) { add(QStringLiteral("KeyDown %1 shift=%2").arg(k).arg(s)); });
    QObject::connect(events, &TabulaEvents::KeyUp,
                     [add](int16_t k, int16_t s) { add(QStringLiteral("KeyUp %1 shift=%2").arg(k).arg(s)); });
    QObject::connect(events, &TabulaEvents::KeyPress, [add](int16_t k) { add(QStringLiteral("KeyPress %1").arg(k)); });
    QObject::connect(events, &TabulaEvents::RowColChange, [add, &grid](int32_t r, int32_t c) {
        add(QStringLiteral("RowColChange from %1,%2 to %3,%4").arg(r).arg(c).arg(grid.Row()).arg(grid.Col()));
    });
    QObject::connect(events, &TabulaEvents::BeforeEdit,
                     [add](int32_t r, int32_t c, bool&) { add(QStringLiteral("BeforeEdit %1,%2").arg(r).arg(c)); });
    QObject::connect(events, &TabulaEvents::AfterEdit, [add](int32_t r, int32_t c, const QString& v) {
        add(QStringLiteral("AfterEdit %1,%2 \"%3\"").arg(r).arg(c).arg(v));
    });
    QObject::connect(events, &TabulaEvents::BtnClick,
                     [add](int32_t r, int32_t c) { add(QStringLiteral("BtnClick %1,%2").arg(r).arg(c)); });
    QObject::connect(events, &TabulaEvents::Resize, [add] { add("Resize"); });
}

QPushButton* button(const QString& text, QWidget* bar, std::function<void()> onClick)
{
    auto* b = new QPushButton(text, bar);
    QObject::connect(b, &QPushButton::clicked, std::move(onClick));
    return b;
}

// The selection mode and the clipboard; Ctrl+C and Ctrl+V work on the grid too.
QWidget* toolBar(Tabula& grid, QPlainTextEdit& log)
{
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(new QLabel(QStringLiteral("Selection:")));
    auto* modes = new QComboBox;
    modes->addItems({QStringLiteral("Free"), QStringLiteral("By row"), QStringLiteral("By column")});
    modes->setCurrentIndex(grid.SelectionMode());
    QObject::connect(modes, &QComboBox::currentIndexChanged, [&grid](int mode) {
        grid.setSelectionMode(static_cast<TabulaControl::SelectModes>(mode));
        grid.Refresh();
    });
    layout->addWidget(modes);
    layout->addStretch();
    layout->addWidget(button(QStringLiteral("Copy"), bar, [&grid] { grid.copySelection(); }));
    layout->addWidget(button(QStringLiteral("Paste"), bar, [&grid] { grid.paste(); }));
    grid.setClipboardShortcuts(true);
    QObject::connect(&grid, &Tabula::pasteClipped, [&log](int32_t dropped) {
        log.appendPlainText(QStringLiteral("Paste: %1 cells lay beyond the grid and were left out").arg(dropped));
    });
    return bar;
}

// The grid as the last session left it (colours, fonts, selection mode ...),
// or styled afresh on the first start.
Tabula* restoredGrid(QSettings& settings)
{
    if (!settings.childGroups().contains(QStringLiteral("grid"))) {
        auto* grid = new Tabula;
        style(*grid);
        return grid;
    }
    return new Tabula(SettingsPropertyBag(settings, QStringLiteral("grid")));
}

// Fills 10,000 cells one by one with redrawing on, as a host's loop does,
// and shows how long that took until the grid was painted.
QWidget* fillTimer(Tabula& grid)
{
    auto* bar = new QWidget;
    auto* layout = new QHBoxLayout(bar);
    layout->setContentsMargins(4, 2, 4, 2);
    auto* button = new QPushButton(QStringLiteral("Fill 10,000 cells"));
    auto* result = new QLabel;
    QObject::connect(button, &QPushButton::clicked, [&grid, result] {
        constexpr int Rows = 500, Cols = 20;
        QElapsedTimer timer;
        timer.start();
        grid.setAutoRedraw(true);
        grid.setCols(Cols);
        grid.setRows(Rows);
        for (int r = 1; r <= Rows; ++r)
            for (int c = 1; c <= Cols; ++c)
                grid.setTextMatrix(r, c, QStringLiteral("%1,%2").arg(r).arg(c));
        grid.Picture();
        result->setText(QStringLiteral("Filled in %1 ms").arg(timer.elapsed()));
    });
    layout->addWidget(button);
    layout->addWidget(result);
    layout->addStretch();
    return bar;
}

// Without a display nobody can click: play a few gestures so the picture
// shows a selection and the log shows their events.
void playGestures(Tabula& grid)
{
    QWidget* surface = grid.findChild<QWidget*>(QStringLiteral("picGrid"));
    if (!surface)
        return;
    auto mouse = [surface](QEvent::Type type, QPointF at, Qt::KeyboardModifiers mods) {
        QMouseEvent e(type, at, surface->mapToGlobal(at), Qt::LeftButton,
                      type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, mods);
        QApplication::sendEvent(surface, &e);
    };
    auto key = [surface](Qt::Key k) {
        QKeyEvent press(QEvent::KeyPress, k, Qt::NoModifier);
        QApplication::sendEvent(surface, &press);
        QKeyEvent release(QEvent::KeyRelease, k, Qt::NoModifier);
        QApplication::sendEvent(surface, &release);
    };
    if (auto* bar = grid.findChild<QScrollBar*>(QStringLiteral("scrVertical")))
        bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    mouse(QEvent::MouseButtonPress, {140, 60}, Qt::NoModifier);
    mouse(QEvent::MouseButtonRelease, {140, 60}, Qt::NoModifier);
    mouse(QEvent::MouseButtonPress, {330, 100}, Qt::ShiftModifier);
    mouse(QEvent::MouseButtonRelease, {330, 100}, Qt::ShiftModifier);
    key(Qt::Key_Down);
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
    QApplication::setOrganizationName(QStringLiteral("Tabula"));
    QApplication::setApplicationName(QStringLiteral("tabula-demo"));
    QSettings settings;

    QMainWindow window;
    window.setWindowTitle(QStringLiteral("Tabula demo"));
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = new QSplitter(Qt::Vertical);
    auto* grid = restoredGrid(settings);
    grid->setObjectName(QStringLiteral("grid"));
    auto* log = new QPlainTextEdit;
    log->setReadOnly(true);
    log->setPlaceholderText(QStringLiteral("Events appear here"));
    splitter->addWidget(grid);
    splitter->addWidget(log);
    splitter->setSizes({300, 140});
    layout->addWidget(toolBar(*grid, *log));
    layout->addWidget(fillTimer(*grid));
    layout->addWidget(ordersDatabaseButton(window));
    layout->addWidget(splitter);
    window.setCentralWidget(central);
    window.resize(574, 480);
    fill(*grid);
    addFileMenu(window, *grid, settings);
    addEditMenu(window, *grid);
    logEvents(*grid, *log);
    QObject::connect(&app, &QApplication::aboutToQuit,
                     [&] { grid->WriteProperties(SettingsPropertyBag(settings, QStringLiteral("grid"))); });
    window.show();

    if (!headless())
        return app.exec();

    QApplication::processEvents();
    playGestures(*grid);
    QApplication::processEvents();
    const QString path = QDir::current().absoluteFilePath(QStringLiteral("tabula-demo.png"));
    if (!window.grab().save(path)) {
        std::fprintf(stderr, "could not write %s\n", qPrintable(path));
        return 1;
    }
    std::printf("No display: wrote a screenshot of the demo window to %s\n", qPrintable(path));
    grid->WriteProperties(SettingsPropertyBag(settings, QStringLiteral("grid")));
    std::printf("Saved the grid's settings to %s\n", qPrintable(settings.fileName()));
    return 0;
}
