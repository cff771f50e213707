#include "tests/support/GridFixture.h"

#include <QApplication>

namespace TabulaTest {

using TabulaControl::TabulaEvents;

EventLog::EventLog(TabulaEvents* events)
{
    auto add = [this](QString entry) { entries.append(entry); };
    QObject::connect(events, &TabulaEvents::Click, [add] { add("Click"); });
    QObject::connect(events, &TabulaEvents::DblClick, [add] { add("DblClick"); });
    QObject::connect(events, &TabulaEvents::Scroll, [add] { add("Scroll"); });
    QObject::connect(events, &TabulaEvents::Resize, [add] { add("Resize"); });
    QObject::connect(events, &TabulaEvents::BtnClick,
                     [add](int32_t r, int32_t c) { add(QString("BtnClick(%1,%2)").arg(r).arg(c)); });
    QObject::connect(events, &TabulaEvents::KeyDown,
                     [add](int16_t k, int16_t s) { add(QString("KeyDown(%1,%2)").arg(k).arg(s)); });
    QObject::connect(events, &TabulaEvents::KeyPress, [add](int16_t k) { add(QString("KeyPress(%1)").arg(k)); });
    QObject::connect(events, &TabulaEvents::KeyUp,
                     [add](int16_t k, int16_t s) { add(QString("KeyUp(%1,%2)").arg(k).arg(s)); });
    auto mouse = [add](const char* name) {
        return [add, name](int16_t b, int16_t s, float x, float y) {
            add(QString("%1(%2,%3,%4,%5)").arg(name).arg(b).arg(s).arg(x).arg(y));
        };
    };
    QObject::connect(events, &TabulaEvents::MouseDown, mouse("MouseDown"));
    QObject::connect(events, &TabulaEvents::MouseMove, mouse("MouseMove"));
    QObject::connect(events, &TabulaEvents::MouseUp, mouse("MouseUp"));
    QObject::connect(events, &TabulaEvents::BeforeEdit, [this, add](int32_t r, int32_t c, bool& cancel) {
        add(QString("BeforeEdit(%1,%2)").arg(r).arg(c));
        if (onBeforeEdit)
            onBeforeEdit(r, c, cancel);
    });
    QObject::connect(events, &TabulaEvents::AfterEdit, [add](int32_t r, int32_t c, QString v) {
        add(QString("AfterEdit(%1,%2,%3)").arg(r).arg(c).arg(v));
    });
    QObject::connect(events, &TabulaEvents::BeforeAddRow, [this, add](bool& cancel) {
        add("BeforeAddRow");
        if (onBeforeAddRow)
            onBeforeAddRow(cancel);
    });
    QObject::connect(events, &TabulaEvents::AfterAddRow, [add](int32_t r) { add(QString("AfterAddRow(%1)").arg(r)); });
    QObject::connect(events, &TabulaEvents::BeforeDeleteRow, [this, add](int32_t r, bool& cancel) {
        add(QString("BeforeDeleteRow(%1)").arg(r));
        if (onBeforeDeleteRow)
            onBeforeDeleteRow(r, cancel);
    });
    QObject::connect(events, &TabulaEvents::AfterDeleteRow,
                     [add](int32_t r) { add(QString("AfterDeleteRow(%1)").arg(r)); });
    QObject::connect(events, &TabulaEvents::RowColChange,
                     [add](int32_t r, int32_t c) { add(QString("RowColChange(%1,%2)").arg(r).arg(c)); });
}

QStringList EventLog::only(const QStringList& names) const
{
    QStringList result;
    for (const QString& entry : entries) {
        const QString name = entry.section('(', 0, 0);
        if (names.contains(name))
            result.append(entry);
    }
    return result;
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
    for (int32_t row = 1; row <= rows; ++row) {
        for (int32_t col = 1; col <= cols; ++col)
            grid_->setTextMatrix(row, col, QString("%1,%2").arg(row).arg(col));
    }
}

uint32_t GridFixture::pixel(int x, int y) { return picture().pixel(x, y) & 0xFFFFFF; }

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
