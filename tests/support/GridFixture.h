#pragma once

#include <TabulaControl/Tabula.h>

#include <QImage>
#include <QSignalSpy>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace TabulaTest {

// Records every event of a grid, in order, as text such as
// "RowColChange(1,2)" or "MouseDown(1,0,40,20)".
class EventLog {
public:
    explicit EventLog(TabulaControl::TabulaEvents* events);
    QStringList entries;
    void clear() { entries.clear(); }
    // The entries whose name is one of names, in order.
    QStringList only(const QStringList& names) const;

    // Handlers that change by-reference arguments.
    std::function<void(bool&)> onBeforeAddRow;
    std::function<void(int32_t, bool&)> onBeforeDeleteRow;
    std::function<void(int32_t, int32_t, bool&)> onBeforeEdit;
};

// "row,col in row1,col1:row2,col2": the current cell and the selected block.
QString whereIn(const TabulaControl::Tabula& grid);

// A shown grid of a known size: 400 x 300 pixels, so the surface is
// 395 x 295 with the scroll bars laid over its right and bottom edges.
class GridFixture : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    TabulaControl::Tabula& grid() { return *grid_; }
    EventLog& log() { return *log_; }
    QImage picture() { return grid_->Picture(); }
    QWidget* child(const char* name) { return grid_->findChild<QWidget*>(name); }
    QWidget* surface() { return child("picGrid"); }
    // "row,col" of the current cell; where() adds " in row1,col1:row2,col2".
    QString current() { return whereIn(*grid_).section(' ', 0, 0); }
    QString where() { return whereIn(*grid_); }
    void moveTo(int32_t row, int32_t col) { grid_->setRow(row); grid_->setCol(col); }
    // Sets the selected block, row1 and col1 being the anchor.
    void select(int32_t row1, int32_t col1, int32_t row2, int32_t col2);
    // Gives the grid rows x cols data cells, each reading "row,col".
    void fillWithPositions(int32_t rows, int32_t cols);
    // The colour at (x, y) of the surface as 0xRRGGBB.
    uint32_t pixel(int x, int y);
    // The texts of the row's data cells.
    QStringList rowTexts(int32_t row);
    // Every data cell, rows joined by "/" and cells by " ".
    QString cells();
    // The sources of the errors the grid reports from now on.
    std::shared_ptr<QStringList> errorSources()
    {
        auto sources = std::make_shared<QStringList>();
        QObject::connect(&grid(), &TabulaControl::Tabula::errorOccurred,
                         [sources](const TabulaControl::ComponentError& e) { sources->append(e.Source); });
        return sources;
    }

    std::unique_ptr<TabulaControl::Tabula> grid_;
    std::unique_ptr<EventLog> log_;
};

// Fixture with `rows` data rows and an empty event log.
template <class Fixture, int32_t rows>
class WithRows : public Fixture {
protected:
    void SetUp() override
    {
        Fixture::SetUp();
        this->grid().setRows(rows);
        this->log().clear();
    }
};

// Runs body and returns the component error it raised; fails the test when
// it raised none.
TabulaControl::ComponentError errorOf(const std::function<void()>& body);

// How many pixels of area have the colour rgb.
int countOf(const QImage& image, const QRect& area, uint32_t rgb);

// The first arguments of the signals spy caught, as text.
QStringList namesIn(const QSignalSpy& spy);

// Names the rows of a table-driven test by their `name`.
inline constexpr auto caseName = [](const auto& info) { return std::string(info.param.name); };

}  // namespace TabulaTest

// Lets GoogleTest print QStrings and QStringLists readably in failures.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList& list, std::ostream* out) { *out << '[' << list.join(", ").toStdString() << ']'; }
