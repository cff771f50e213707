#include "tests/support/GridFixture.h"

#include <QApplication>
#include <QRegularExpression>

namespace TabulaTest {

using TabulaControl::TabulaEvents;

EventLog::EventLog(TabulaEvents* events)
{
    auto add = [this](QString entry) { entries.append(entry); };
    auto named = [add](const char* name) {
        return [add, name](auto... args) {
            QStringList texts;
            (texts.append(QVariant::fromValue(args).toString()), ...);
            add(texts.isEmpty() ? QString(name) : QString("%1(%2)").arg(name, texts.join(',')));
        };
    };
    const auto logAll = [&](auto... signal) { (QObject::connect(events, signal.second, named(signal.first)), ...); };
#define EVENT(Name) std::pair { #Name, &TabulaEvents::Name }
    logAll(EVENT(Click), EVENT(DblClick), EVENT(Scroll), EVENT(Resize), EVENT(BtnClick), EVENT(KeyDown),
           EVENT(KeyPress), EVENT(KeyUp), EVENT(MouseDown), EVENT(MouseMove), EVENT(MouseUp), EVENT(AfterEdit),
           EVENT(AfterAddRow), EVENT(AfterDeleteRow), EVENT(RowColChange));
#undef EVENT
    QObject::connect(events, &TabulaEvents::BeforeEdit, [this, add](int32_t r, int32_t c, bool& cancel) {
        add(QString("BeforeEdit(%1,%2)").arg(r).arg(c));
        if (onBeforeEdit)
            onBeforeEdit(r, c, cancel);
    });
    QObject::connect(events, &TabulaEvents::BeforeAddRow, [this, add](bool& cancel) {
        add("BeforeAddRow");
        if (onBeforeAddRow)
            onBeforeAddRow(cancel);
    });
    QObject::connect(events, &TabulaEvents::BeforeDeleteRow, [this, add](int32_t r, bool& cancel) {
        add(QString("BeforeDeleteRow(%1)").arg(r));
        if (onBeforeDeleteRow)
            onBeforeDeleteRow(r, cancel);
    });
}

QStringList EventLog::only(const QStringList& names) const
{
    return entries.filter(QRegularExpression("^(" + names.join('|') + ")(\\(|$)"));
}

void GridFixture::SetUp()
{
    grid_ = std::make_unique<TabulaControl::Tabula>();
    grid_->resize(400, 300);
    grid_->show();
    QApplication::processEvents();
    log_ = std::make_unique<EventLog>(grid_->events());
}

void GridFixture::TearDown()
{
    log_.reset();
    grid_.reset();
}

void GridFixture::fillWithPositions(int32_t rows, int32_t cols)
{
    grid_->setRows(rows);
    grid_->setCols(cols);
    for (int32_t row = 1; row <= rows; ++row)
        for (int32_t col = 1; col <= cols; ++col)
            grid_->setTextMatrix(row, col, QString("%1,%2").arg(row).arg(col));
}

void GridFixture::select(int32_t row1, int32_t col1, int32_t row2, int32_t col2)
{
    grid_->setRow1(row1);
    grid_->setCol1(col1);
    grid_->setRow2(row2);
    grid_->setCol2(col2);
}

QStringList GridFixture::rowTexts(int32_t row)
{
    QStringList texts;
    for (int32_t col = 1; col <= grid_->Cols(); ++col)
        texts.append(grid_->TextMatrix(row, col));
    return texts;
}

QString GridFixture::cells()
{
    QStringList rows;
    for (int32_t row = 1; row <= grid_->Rows(); ++row)
        rows << rowTexts(row).join(' ');
    return rows.join('/');
}

uint32_t GridFixture::pixel(int x, int y) { return picture().pixel(x, y) & 0xFFFFFF; }

QString whereIn(const TabulaControl::Tabula& g)
{
    const auto at = [](int32_t row, int32_t col) { return QString("%1,%2").arg(row).arg(col); };
    return at(g.Row(), g.Col()) + " in " + at(g.Row1(), g.Col1()) + ":" + at(g.Row2(), g.Col2());
}

TabulaControl::ComponentError errorOf(const std::function<void()>& body)
{
    try {
        body();
    } catch (const TabulaControl::ComponentError& error) {
        return error;
    }
    ADD_FAILURE() << "no component error was raised";
    return TabulaControl::ComponentError({}, {});
}

int countOf(const QImage& image, const QRect& area, uint32_t rgb)
{
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            n += (image.pixel(x, y) & 0xFFFFFF) == rgb ? 1 : 0;
    return n;
}

QStringList namesIn(const QSignalSpy& spy)
{
    QStringList names;
    for (const auto& args : spy)
        names.append(args.at(0).toString());
    return names;
}

}  // namespace TabulaTest
