#include "fuzz/Harness.h"

#include <QApplication>
#include <QScreen>

#include <cmath>
#include <utility>

namespace TabulaFuzz {

using TabulaControl::ComponentError;
using TabulaControl::Tabula;

Harness::Harness() { replaceGrid(std::make_unique<Tabula>()); }

Harness::~Harness()
{
    grid_.reset();
    settle();
}

QWidget* Harness::child(const char* name) const { return grid_->findChild<QWidget*>(QLatin1String(name)); }

QWidget* Harness::keyboardTarget() const
{
    QWidget* focus = QApplication::focusWidget();
    for (QWidget* w = focus; w; w = w->parentWidget())
        if (w == grid_.get())
            return focus;
    return child("picGrid");
}

void Harness::replaceGrid(std::unique_ptr<Tabula> grid)
{
    grid_ = std::move(grid);
    QObject::connect(grid_.get(), &Tabula::errorOccurred, grid_.get(), [this](const ComponentError& error) {
        // Borders placed by negative sizes make position sums that overflow
        // 16 bits, and the grid reports that overflow as it must.
        if (!(negativeSizes && error.causeText().endsWith(QLatin1String("Overflow"))))
            reportedErrors.append(error.Source + QLatin1String(": ") + error.Description);
    });
    show();
}

void Harness::show()
{
    grid_->resize(400, 300);
    grid_->show();
    grid_->activateWindow();
    settle();
}

void settle()
{
    QApplication::sendPostedEvents();
    QApplication::processEvents();
}

namespace {

struct Field {
    const char* name;
    int64_t value, lo, hi;
};

// The counts and positions, each with the range a valid grid keeps it in.
std::vector<Field> fields(const Tabula& grid)
{
    const int64_t rows = grid.Rows(), cols = grid.Cols();
    return {{"Rows", rows, 1, 32767},           {"Cols", cols, 1, 32767},
            {"Row", grid.Row(), 1, rows},        {"Col", grid.Col(), 1, cols},
            {"TopRow", grid.TopRow(), 1, rows},  {"LeftCol", grid.LeftCol(), 1, cols},
            {"Row1", grid.Row1(), 0, rows},      {"Col1", grid.Col1(), 0, cols},
            {"Row2", grid.Row2(), 0, rows},      {"Col2", grid.Col2(), 0, cols}};
}

}  // namespace

QStringList invalidFields(const Tabula& grid)
{
    QStringList invalid;
    for (const Field& f : fields(grid))
        if (f.value < f.lo || f.value > f.hi)
            invalid << QLatin1String(f.name);
    return invalid;
}

bool isValid(const Tabula& grid) { return invalidFields(grid).isEmpty(); }

QString positions(const Tabula& grid)
{
    QStringList all;
    for (const Field& f : fields(grid))
        all << QStringLiteral("%1=%2").arg(QLatin1String(f.name)).arg(f.value);
    return all.join(QLatin1Char(' '));
}

namespace {

[[noreturn]] void fail(const QString& signature) { throw CheckFailure(signature); }

// Runs the step, and then the event loop unless the next step is chained to
// it; a component error is allowed, anything else escaping fails.
bool runTrapped(Harness& harness, const Operation& op)
{
    const auto settleUnlessChained = [&] {
        if (!op.chained)
            settle();
    };
    try {
        run(harness, op);
        settleUnlessChained();
        return false;
    } catch (const ComponentError&) {
        settleUnlessChained();
        return true;
    } catch (const CheckFailure&) {
        throw;
    } catch (const std::exception& e) {
        fail(QStringLiteral("%1 let a non-component exception escape: %2").arg(nameOf(op), QLatin1String(e.what())));
    } catch (...) {
        fail(QStringLiteral("%1 let an unknown exception escape").arg(nameOf(op)));
    }
}

QString firstLine(const QStringList& errors) { return errors.isEmpty() ? QString() : errors.first(); }

// The part of the surface no other widget of the grid covers, in the
// surface's pixels; a pixel around each widget is left out, where a
// fractional device pixel ratio blends the two.
QRegion uncoveredSurface(const Tabula& grid, const QWidget& surface)
{
    const QPoint origin = surface.mapTo(&grid, QPoint(0, 0));
    QRegion region = surface.rect();
    for (const QWidget* w : grid.findChildren<QWidget*>())
        if (w != &surface && w->isVisible() && !w->isWindow())
            region -= QRect(w->mapTo(&grid, QPoint(0, 0)) - origin, w->size()).adjusted(-1, -1, 1, 1);
    return region;
}

// Once the picture stops changing the screen shows every pixel of it. (A
// drag held outside the grid goes on scrolling it.)
void checkScreen(Harness& harness, const Operation& op)
{
    const QWidget* surface = harness.child("picGrid");
    if (!surface || !surface->isVisible() || !harness.grid().isWindow())
        return;
    const QImage before = harness.grid().Picture();
    const std::pair view(harness.grid().TopRow(), harness.grid().LeftCol());
    settle();
    // The screen takes a rectangle in widget pixels and gives device pixels.
    const qreal ratio = before.devicePixelRatio();
    const QPoint origin = surface->mapTo(&harness.grid(), QPoint(0, 0));
    if (origin.x() * ratio != std::floor(origin.x() * ratio) || origin.y() * ratio != std::floor(origin.y() * ratio))
        return;
    const QImage screen = QGuiApplication::primaryScreen()
                              ->grabWindow(harness.grid().winId(), origin.x(), origin.y(), surface->width(), surface->height())
                              .toImage();
    const QImage picture = harness.grid().Picture();
    // A grid still scrolling can show the same picture a row later, where
    // rows alternate colours.
    if (picture != before || view != std::pair(harness.grid().TopRow(), harness.grid().LeftCol()))
        return;
    const QRect shown = picture.rect() & screen.rect();
    for (const QRect& r : uncoveredSurface(harness.grid(), *surface)) {
        const QRect device = QRect(QPoint(std::ceil(r.left() * ratio), std::ceil(r.top() * ratio)),
                                   QPoint(std::floor((r.right() + 1) * ratio) - 1, std::floor((r.bottom() + 1) * ratio) - 1)) &
                             shown;
        for (int y = device.top(); y <= device.bottom(); ++y)
            for (int x = device.left(); x <= device.right(); ++x)
                if (screen.pixel(x, y) != picture.pixel(x, y))
                    fail(QStringLiteral("%1 left the screen behind the picture").arg(nameOf(op)));
    }
}

void checkInput(Harness& harness, const Operation& op)
{
    if (!harness.reportedErrors.isEmpty())
        fail(QStringLiteral("%1 on a valid grid raised errorOccurred: %2").arg(nameOf(op), firstLine(harness.reportedErrors)));
    if (!isValid(harness.grid()))
        fail(QStringLiteral("%1 on a valid grid left %2 outside the grid")
                 .arg(nameOf(op), invalidFields(harness.grid()).join(QLatin1Char(','))));
}

}  // namespace

bool checkedStep(Harness& harness, const Operation& op)
{
    const bool guarded = isInput(op) && isValid(harness.grid());
    harness.reportedErrors.clear();
    try {
        const bool raised = runTrapped(harness, op);
        if (guarded)
            checkInput(harness, op);
        if (!op.chained)
            checkScreen(harness, op);
        return raised;
    } catch (const CheckFailure& failure) {
        throw CheckFailure(QString::fromStdString(failure.what()), positions(harness.grid()));
    }
}

}  // namespace TabulaFuzz
