#pragma once

#include "fuzz/Operation.h"

#include <TabulaControl/Tabula.h>

#include <QStringList>

#include <memory>
#include <stdexcept>

namespace TabulaFuzz {

// A check that failed; what() is the failure's signature, the same for every
// sequence that shows the same defect.
class CheckFailure : public std::runtime_error {
public:
    explicit CheckFailure(const QString& signature, const QString& detail = QString())
        : std::runtime_error(signature.toStdString()), detail(detail)
    {
    }
    // The grid's counts and positions when the check failed.
    QString detail;
};

// A shown top-level grid of 400 x 300 pixels, as a host form shows it, with
// the errors it reported through errorOccurred.
class Harness {
public:
    Harness();
    ~Harness();

    TabulaControl::Tabula& grid() { return *grid_; }
    const TabulaControl::Tabula& grid() const { return *grid_; }
    QWidget* child(const char* name) const;
    // The widget that receives the keyboard: the focus widget when the grid
    // owns it (the drop-down list included), else the surface.
    QWidget* keyboardTarget() const;
    void replaceGrid(std::unique_ptr<TabulaControl::Tabula> grid);

    QStringList reportedErrors;
    // Whether the host gave a line a negative size; reloaded grids keep the sizes.
    bool negativeSizes = false;

private:
    void show();

    std::unique_ptr<TabulaControl::Tabula> grid_;
};

// The grid as the host left it is valid when its counts and positions lie
// inside the grid: 1 <= Rows <= 32767, 1 <= Cols <= 32767, 1 <= Row, TopRow
// <= Rows, 1 <= Col, LeftCol <= Cols, and the selection corners inside the
// grid or on its headers: 0 <= Row1, Row2 <= Rows and 0 <= Col1, Col2 <= Cols.
bool isValid(const TabulaControl::Tabula& grid);
// The names of the counts and positions that make the grid invalid.
QStringList invalidFields(const TabulaControl::Tabula& grid);
QString positions(const TabulaControl::Tabula& grid);

// Runs one step and checks it: only ComponentError may escape, and input on a
// valid grid raises no errorOccurred and leaves the grid valid. Throws
// CheckFailure. Returns whether the step raised a ComponentError.
bool checkedStep(Harness& harness, const Operation& op);

// Lets the grid's zero-time timers and queued events run.
void settle();

}  // namespace TabulaFuzz
