#include "grid/Grid.h"

#include <QMetaType>

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

private:
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

void Grid::updateHeader() { HeaderParser(*this).run(model.formatString()); }

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
