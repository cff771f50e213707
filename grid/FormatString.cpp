#include "grid/Grid.h"

#include <QMetaType>

#include <algorithm>
#include <vector>

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

// The text between two separators of a format string, whether a ';' came
// before it, and whether it is the last.
struct HeaderToken {
    QString text;
    bool rowPart = false;
    bool last = false;
};

std::vector<HeaderToken> tokensOf(const QString& format)
{
    std::vector<HeaderToken> tokens;
    HeaderToken token;
    for (QChar ch : format) {
        if (ch != QLatin1Char('|') && ch != QLatin1Char(';')) {
            token.text.append(ch);
            continue;
        }
        tokens.push_back(token);
        token.text.clear();
        token.rowPart = token.rowPart || ch == QLatin1Char(';');
    }
    token.last = true;
    tokens.push_back(token);
    return tokens;
}

// Parses mFormatString into the header captions, alignments and widths.
// Widths are measured before trailing blanks are dropped from a caption.
// The grid grows once to what the captions reach: growing a caption at a
// time would insert into a bound model once per caption.
class HeaderParser {
public:
    explicit HeaderParser(Grid& grid)
        : g_(grid), model_(grid.model), colsBefore_(model_.cols().count()), rowsBefore_(model_.rows().count())
    {
    }

    void run(const std::vector<HeaderToken>& tokens)
    {
        growToReach(tokens);
        try {
            for (const HeaderToken& token : tokens) {
                token_ = token.text;
                rowPart_ = token.rowPart;
                completeToken(token.last);
            }
        } catch (...) {
            shrinkToReached();
            throw;
        }
    }

private:
    // The last column a caption is written to and the number of row captions.
    void growToReach(const std::vector<HeaderToken>& tokens)
    {
        int32_t cols = 0;
        int32_t rows = 0;
        for (size_t i = 0; i < tokens.size(); ++i) {
            if (tokens[i].text.isEmpty())
                continue;
            if (tokens[i].rowPart)
                ++rows;
            else
                cols = static_cast<int32_t>(i) + 1;
        }
        try {
            if (cols > colsBefore_)
                g_.setCols(cols);
            if (rows > rowsBefore_)
                g_.setRows(rows);
        } catch (...) {
            // The captions then grow the grid one at a time and fail where that fails.
        }
    }

    // After a failure, the counts as growing one caption at a time would have
    // left them: at least as before, and as far as the captions had reached.
    void shrinkToReached() noexcept
    {
        try {
            if (model_.cols().count() > std::max(colsBefore_, reachedCols_))
                g_.setCols(std::max(colsBefore_, reachedCols_));
            if (model_.rows().count() > std::max(rowsBefore_, reachedRows_))
                g_.setRows(std::max(rowsBefore_, reachedRows_));
        } catch (...) {
            // The caller hears of the parse's failure, not of this one.
        }
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
    const int32_t colsBefore_;
    const int32_t rowsBefore_;
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

void Grid::updateHeader() { HeaderParser(*this).run(tokensOf(model.formatString())); }

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
