#include "api/Facade.h"
#include "state/Csv.h"

#include <QIODevice>
#include <QStringDecoder>

namespace TabulaControl {

namespace {

using detail::csv::Table;

// Small enough that each piece is parsed well within the 100 ms between
// progress reports.
constexpr qint64 PieceBytes = 256 * 1024;
constexpr qsizetype MaxLines = INT16_MAX;
const QString LoadSource = QStringLiteral("TabulaControl.Tabula.loadCsv");

[[noreturn]] void failLoad(const QString& description)
{
    throw ComponentError(LoadSource, description, std::current_exception());
}

void storeTable(detail::Grid& g, const Table& table, bool headerRow)
{
    const qsizetype skipped = headerRow && table.recordCount() > 0 ? 1 : 0;
    const auto dataRows = static_cast<int32_t>(table.recordCount() - skipped);
    const auto cols = static_cast<int32_t>(table.columnCount());
    g.endEdit();
    {
        const detail::RedrawDeferred deferred(g);
        g.setCols(cols);
        g.setRows(dataRows);
        detail::CellArray& cells = g.model.cells();
        for (int32_t r = 0; r <= dataRows; ++r) {
            const qsizetype record = r - 1 + skipped;
            cells.setText(static_cast<int16_t>(r), 0, {});
            for (int32_t c = 1; c <= cols; ++c)
                cells.setText(static_cast<int16_t>(r), static_cast<int16_t>(c),
                              record < 0 ? QStringView() : table.field(record, c - 1));
        }
    }
    g.Refresh();
}

}  // namespace

void Tabula::loadCsv(QIODevice& device, const CsvOptions& options)
{
    if (csvLoading_)
        failLoad(QStringLiteral("a CSV file is already loading into this grid"));
    if (!device.isReadable())
        failLoad(QStringLiteral("the device is not open for reading"));
    csvLoading_ = true;
    csvCancelled_ = false;
    const auto done = qScopeGuard([this] { csvLoading_ = false; });
    const qint64 total = device.isSequential() ? 0 : std::max<qint64>(device.size() - device.pos(), 0);
    qint64 read = 0;
    QStringDecoder decoder(QStringDecoder::Utf8);
    detail::csv::Parser parser(options.separator, MaxLines + (options.headerRow ? 1 : 0), MaxLines);
    try {
        for (QByteArray piece = device.read(PieceBytes); !piece.isEmpty(); piece = device.read(PieceBytes)) {
            read += piece.size();
            parser.feed(QString(decoder(piece)));
            emit csvProgress(read, total);
            if (csvCancelled_)
                return;
        }
        const Table table = parser.finish();
        emit csvProgress(read, total);
        if (csvCancelled_)
            return;
        repaintingChange("loadCsv", [&] { storeTable(*grid_, table, options.headerRow); });
    } catch (const ComponentError&) {
        throw;
    } catch (const detail::csv::MalformedError& error) {
        failLoad(QStringLiteral("Malformed CSV at line %1: %2").arg(error.line()).arg(QLatin1String(error.what())));
    } catch (...) {
        failLoad(QStringLiteral("the file could not be read"));
    }
}

void Tabula::cancelCsv() { csvCancelled_ = true; }

void Tabula::saveCsv(QIODevice& device, const CsvOptions& options) const
{
    call("saveCsv", [&] {
        const QChar separator = options.separator.isNull() ? QChar(u',') : options.separator;
        const auto& cells = grid_->model.cells();
        const int32_t cols = grid_->model.cols().count();
        QString line;
        for (int32_t r = options.headerRow ? 0 : 1; r <= grid_->model.rows().count(); ++r) {
            line.clear();
            for (int32_t c = 1; c <= cols; ++c) {
                if (c > 1)
                    line += separator;
                detail::csv::appendField(line, cells.Text(detail::to16(r), detail::to16(c)), separator);
            }
            line += QLatin1String("\r\n");
            const QByteArray bytes = line.toUtf8();
            if (device.write(bytes) != bytes.size())
                detail::raise(detail::RuntimeError::InvalidCall);
        }
    });
}

}  // namespace TabulaControl
