#include "grid/Grid.h"

#include <QMetaType>

#include <algorithm>

namespace TabulaControl::detail {

namespace {

constexpr int16_t EmptyCaptionWidth = 64;
constexpr double CaptionPadding = 5;

// The alignment a leading mark selects, or nothing when ch is no mark.
std::optional<int16_t> alignmentMark(QChar ch)
{
    const qsizetype alignment = QStringView(u"<^>").indexOf(ch);
    return alignment < 0 ? std::nullopt : std::optional<int16_t>(static_cast<int16_t>(alignment));
}

QString withoutTrailingBlanks(const QString& text)
{
    qsizetype end = text.size();
    while (end > 0 && text.at(end - 1) == QLatin1Char(' '))
        --end;
    return text.left(end);
}

// A count handed over as a variant, converted as a 32-bit integer argument
// takes it: empty is 0, numbers and numeric text round half to even, True is
// -1, anything else is a type mismatch.
int32_t countOf(const QVariant& value)
{
    if (!value.isValid())
        return 0;
    if (value.metaType().id() == QMetaType::Bool)
        return value.toBool() ? -1 : 0;
    bool ok = false;
    const double number = value.metaType().id() == QMetaType::QString ? value.toString().trimmed().toDouble(&ok)
                                                                       : value.toDouble(&ok);
    if (!ok)
        raise(RuntimeError::TypeMismatch);
    return roundTo32(number);
}

QString textOf(const QVariant& value)
{
    if (value.metaType().id() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    return value.toString();
}

// The last column a caption of format is written to, and the number of row
// captions: the counts the header grows to, tokens split as HeaderParser
// splits them.
struct HeaderReach {
    int32_t cols = 0;
    int32_t rows = 0;
};

HeaderReach reachOf(const QString& format)
{
    HeaderReach reach;
    bool rowPart = false;
    int32_t col = 1;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= format.size(); ++i) {
        const bool end = i == format.size();
        if (!end && format.at(i) != QLatin1Char('|') && format.at(i) != QLatin1Char(';'))
            continue;
        if (i > start && rowPart)
            ++reach.rows;
        else if (i > start)
            reach.cols = col;
        ++col;
        rowPart = rowPart || (!end && format.at(i) == QLatin1Char(';'));
        start = i + 1;
    }
    return reach;
}

// Parses mFormatString into the header captions, alignments and widths.
// Widths are measured before trailing blanks are dropped from a caption.
class HeaderParser {
public:
    explicit HeaderParser(Grid& grid) : g_(grid), model_(grid.model) {}

    void run(const QString& format)
    {
        for (QChar ch : format) {
            if (ch != QLatin1Char('|') && ch != QLatin1Char(';')) {
                token_.append(ch);
                continue;
            }
            completeToken(false);
            token_.clear();
            if (ch == QLatin1Char(';'))
                rowPart_ = true;
        }
        completeToken(true);
    }

    // An empty token clears its column, unless it is the last; a last column
    // caption clears the columns after it.
    void completeToken(bool last)
    {
        if (token_.isEmpty() && !last)
            return clearColumn();
        if (token_.isEmpty())
            return;
        if (rowPart_)
            return rowCaption();
        columnCaption();
        for (int32_t c = col_ + 1; last && c <= model_.cols().count(); ++c)
            resetColumn(c);
    }

    // After a failure, the counts as growing one caption at a time would have
    // left them: at least as before, and as far as the captions had reached.
    void shrinkToReached(int32_t colsBefore, int32_t rowsBefore)
    {
        const int32_t cols = std::max(colsBefore, reachedCols_);
        const int32_t rows = std::max(rowsBefore, reachedRows_);
        if (model_.cols().count() > cols)
            g_.setCols(cols);
        if (model_.rows().count() > rows)
            g_.setRows(rows);
    }

private:
    void columnCaption()
    {
        if (model_.cols().count() < col_)
            g_.setCols(col_);
        reachedCols_ = col_;
        int16_t alignment = 0;
        if (const auto mark = alignmentMark(token_.front())) {
            alignment = *mark;
            token_.remove(0, 1);
        }
        model_.columns().setAlignment(col_, alignment);
        model_.setColumnWidth(col_, to16(roundTo32(measure(token_) + CaptionPadding)));
        model_.setText(0, col_, withoutTrailingBlanks(token_));
        ++col_;
    }

    void rowCaption()
    {
        col_ = 0;
        if (model_.rows().count() < row_)
            g_.setRows(row_);
        reachedRows_ = row_;
        const double width = measure(token_) + CaptionPadding;
        if (width > model_.cols().size(0))
            model_.setColumnWidth(0, to16(roundTo32(width)));
        model_.setText(row_, 0, withoutTrailingBlanks(token_));
        ++row_;
    }

    void clearColumn()
    {
        resetColumn(col_);
        ++col_;
    }

    void resetColumn(int32_t c)
    {
        model_.setText(0, c, QString());
        model_.setColumnWidth(c, EmptyCaptionWidth);
    }

    double measure(const QString& text) const { return g_.ui.window.TextWidth(text); }

    Grid& g_;
    GridModel& model_;
    QString token_;
    int32_t col_ = 1;
    int32_t row_ = 1;
    int32_t reachedCols_ = 0;
    int32_t reachedRows_ = 0;
    bool rowPart_ = false;
};

}  // namespace

void Grid::setFormatString(const QString& value)
{
    model.setFormatString(value);
    ClearAllLookups();
    {
        // Every caption may grow the columns; the grid is painted once, after.
        const RedrawDeferred deferred(*this);
        updateHeader();
    }
    Refresh();
    notifyPropertyChanged("FormatString");
}

// The grid grows once to what the captions reach: growing a caption at a
// time would insert into a bound model once per caption.
void Grid::updateHeader()
{
    const int32_t colsBefore = model.cols().count();
    const int32_t rowsBefore = model.rows().count();
    const HeaderReach reach = reachOf(model.formatString());
    try {
        if (reach.cols > colsBefore)
            setCols(reach.cols);
        if (reach.rows > rowsBefore)
            setRows(reach.rows);
    } catch (...) {
        // The captions then grow the grid one at a time and fail where that fails.
    }
    HeaderParser parser(*this);
    try {
        parser.run(model.formatString());
    } catch (...) {
        try {
            parser.shrinkToReached(colsBefore, rowsBefore);
        } catch (...) {
            // The caller hears of the parse's failure, not of this one.
        }
        throw;
    }
}

void Grid::AutoSetup(const QVariant& rows, const QVariant& cols, bool rowHeader, bool colHeader,
                     const QVariant& formatString)
{
    const bool autoRedraw = autoRedraw_;
    autoRedraw_ = false;
    ui.scrVertical.setMax(0);
    model.setRowCount(0);
    setRows(countOf(rows));
    setCols(countOf(cols));
    setRowHeader(rowHeader);
    setColHeader(colHeader);
    model.setFormatString(textOf(formatString));
    ClearAllLookups();
    updateHeader();
    autoRedraw_ = autoRedraw;
    Refresh();
}

}  // namespace TabulaControl::detail
