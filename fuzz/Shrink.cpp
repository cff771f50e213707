#include "fuzz/Shrink.h"

#include <QStringList>

namespace TabulaFuzz {

namespace {

Sequence without(const Sequence& steps, size_t start, size_t length)
{
    Sequence result(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(start));
    const size_t end = std::min(steps.size(), start + length);
    result.insert(result.end(), steps.begin() + static_cast<std::ptrdiff_t>(end), steps.end());
    return result;
}

class Shrinker {
public:
    Shrinker(const QString& signature, const Replay& replay, int maxReplays)
        : signature_(signature), replay_(replay), budget_(maxReplays)
    {
    }

    // Replays candidate; on the same failure keeps it, cut after the step
    // that failed.
    bool tryKeep(Sequence& steps, const Sequence& candidate)
    {
        if (candidate.empty() || budget_ <= 0)
            return false;
        --budget_;
        const Verdict verdict = replay_(candidate);
        if (verdict.signature != signature_)
            return false;
        steps.assign(candidate.begin(), candidate.begin() + static_cast<std::ptrdiff_t>(std::min(candidate.size(), verdict.failedAt + 1)));
        return true;
    }

    // One sweep over the steps with chunks of the given length.
    bool sweep(Sequence& steps, size_t chunk)
    {
        bool removed = false;
        for (size_t start = 0; start < steps.size() && budget_ > 0;) {
            if (tryKeep(steps, without(steps, start, chunk)))
                removed = true;
            else
                start += chunk;
        }
        return removed;
    }

    bool exhausted() const { return budget_ <= 0; }

private:
    QString signature_;
    const Replay& replay_;
    int budget_;
};

}  // namespace

Sequence shrink(Sequence failing, const QString& signature, const Replay& replay, int maxReplays)
{
    Shrinker shrinker(signature, replay, maxReplays);
    bool removed = true;
    while (removed && !shrinker.exhausted()) {
        removed = false;
        for (size_t chunk = std::max<size_t>(1, failing.size() / 2); chunk >= 1; chunk /= 2) {
            removed = shrinker.sweep(failing, chunk) || removed;
            if (chunk == 1)
                break;
        }
    }
    return failing;
}

namespace {

const char* const preamble = R"(auto grid = std::make_unique<TabulaControl::Tabula>();
QStringList errors;
auto settle = [] { QApplication::sendPostedEvents(); QApplication::processEvents(); };
auto watch = [&] {
    QObject::connect(grid.get(), &TabulaControl::Tabula::errorOccurred,
                     [&](const TabulaControl::ComponentError& e) { errors << e.Source + ": " + e.Description; });
    grid->resize(400, 300); grid->show(); grid->activateWindow(); settle();
};
watch();
auto call = [&](auto body) { try { body(); } catch (const TabulaControl::ComponentError&) {} settle(); };
auto chain = [&](auto body) { try { body(); } catch (const TabulaControl::ComponentError&) {} };
auto child = [&](const char* name) { return grid->findChild<QWidget*>(name); };
auto focused = [&] {
    for (QWidget* w = QApplication::focusWidget(); w; w = w->parentWidget())
        if (w == grid.get()) return QApplication::focusWidget();
    return child("picGrid"); };
auto drag = [](QWidget* w, Qt::MouseButton b, Qt::KeyboardModifiers m, QPoint from, QPoint to) {
    QTest::mousePress(w, b, m, from); QTest::mouseMove(w, (from + to) / 2); QTest::mouseMove(w, to); QTest::mouseRelease(w, b, m, to); };
auto wheel = [](QWidget* w, QPoint at, QPoint delta) {
    QWheelEvent e(at, w->mapToGlobal(at), QPoint(), delta, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(w, &e); };
auto font = [](const char* name, float size, bool styled = false) {
    auto f = std::make_shared<TabulaControl::StdFont>(); f->Name = name; f->Size = size;
    f->Bold = f->Italic = f->Underline = f->Strikethrough = styled; return f; };
auto reload = [&](const QString& key, const QVariant& value) {
    TabulaControl::MemoryPropertyBag bag; grid->WriteProperties(bag); bag.values[key] = value;
    try { grid = std::make_unique<TabulaControl::Tabula>(bag); } catch (const TabulaControl::ComponentError&) { grid = std::make_unique<TabulaControl::Tabula>(); }
    watch(); };
auto copyGrid = [&](int width, int height, const QString& text) {
    TabulaControl::MemoryPropertyBag bag; grid->WriteProperties(bag); TabulaControl::Tabula second(bag);
    second.resize(width, height); second.show(); settle(); second.setTextMatrix(1, 1, text); (void)second.Picture();
    QTest::keyClick(second.findChild<QWidget*>("picGrid"), Qt::Key_Down); settle(); };
auto csvOptions = [](int separator, bool header) { TabulaControl::CsvOptions o; o.headerRow = header;
    o.separator = separator ? QStringLiteral(",;\t|")[separator - 1] : QChar(); return o; };
auto loadCsv = [&](const QString& text, int separator, bool header, bool cancel) {
    QByteArray bytes = text.toUtf8(); QBuffer b(&bytes); b.open(QIODevice::ReadOnly);
    auto c = cancel ? QObject::connect(grid.get(), &TabulaControl::Tabula::csvProgress, grid.get(), &TabulaControl::Tabula::cancelCsv)
                    : QMetaObject::Connection();
    call([&] { grid->loadCsv(b, csvOptions(separator, header)); }); QObject::disconnect(c); };
auto saveCsv = [&](int separator, bool header) { QBuffer b; b.open(QIODevice::WriteOnly); call([&] { grid->saveCsv(b, csvOptions(separator, header)); }); };
auto printToPdf = [&] { QBuffer b; b.open(QIODevice::WriteOnly); QPdfWriter pdf(&b); call([&] { grid->print(&pdf); }); };
auto restoreLayout = [&](int how, int at, int byte, const QString& text) {
    QByteArray l = how == 2 ? text.toLatin1() : grid->saveLayout(); if (how == 1 && !l.isEmpty()) l[at % l.size()] = char(byte);
    call([&] { (void)grid->restoreLayout(l); }); };
auto setModelData = [&](int row, int col, const QString& text) {
    auto* m = grid->model(); m->setData(m->index(row, col), text); (void)m->data(m->index(col, row)); settle(); };
auto setStandardModel = [&](int rows, int cols, const QString& text) {
    auto* m = rows > 0 ? new QStandardItemModel(rows, cols, grid.get()) : nullptr;
    for (int r = 0; m && r < rows; ++r) for (int c = 0; c < cols; ++c) m->setItem(r, c, new QStandardItem(QString("%1-%2").arg(r).arg(c) + text));
    call([&] { grid->setModel(m); }); };
)";

}  // namespace

QString reproduction(const Sequence& steps, const Verdict& verdict, uint64_t seed, size_t originalLength)
{
    QStringList lines;
    lines << QStringLiteral("// seed %1: %2 of %3 steps").arg(seed).arg(steps.size()).arg(originalLength);
    lines << QStringLiteral("// fails: %1").arg(verdict.signature);
    if (!verdict.detail.isEmpty())
        lines << QStringLiteral("// state after the last step: %1").arg(verdict.detail);
    lines << QString::fromUtf8(preamble).trimmed();
    for (const Operation& op : steps) {
        if (op.chained)
            lines << QStringLiteral("chain(") + print(op).mid(5);
        else
            lines << (isInput(op) ? print(op) + QStringLiteral(" settle();") : print(op));
    }
    lines << QStringLiteral("// the last step fails the check above");
    return lines.join(QLatin1Char('\n'));
}

}  // namespace TabulaFuzz
