#include "state/Csv.h"

#include <algorithm>
#include <array>
#include <utility>

namespace TabulaControl::detail::csv {

namespace {

constexpr QChar Quote = u'"';
constexpr std::array<QChar, 3> Candidates = {u',', u';', u'\t'};
constexpr int LinesForDetection = 10;
constexpr qsizetype HeldForDetection = 64 * 1024;

bool isLineBreak(QChar c) { return c == u'\n' || c == u'\r'; }

}  // namespace

qsizetype Table::fieldCount(qsizetype record) const
{
    const size_t first = record == 0 ? 0 : recordEnds_[static_cast<size_t>(record) - 1];
    return static_cast<qsizetype>(recordEnds_[static_cast<size_t>(record)] - first);
}

QStringView Table::field(qsizetype record, qsizetype index) const
{
    if (index >= fieldCount(record))
        return {};
    const size_t at = (record == 0 ? 0 : recordEnds_[static_cast<size_t>(record) - 1]) + static_cast<size_t>(index);
    const qsizetype start = at == 0 ? 0 : fieldEnds_[at - 1];
    return QStringView(chars_).sliced(start, fieldEnds_[at] - start);
}

Parser::Parser(QChar separator, qsizetype maxRecords, qsizetype maxColumns)
    : separator_(separator), maxRecords_(maxRecords), maxColumns_(maxColumns)
{
}

void Parser::lineBreak(QChar c)
{
    if (!(c == u'\n' && afterCarriageReturn_))
        ++line_;
    afterCarriageReturn_ = c == u'\r';
}

void Parser::endField()
{
    table_.fieldEnds_.push_back(table_.chars_.size());
    state_ = State::FieldStart;
}

void Parser::endRecord()
{
    endField();
    const size_t first = table_.recordEnds_.empty() ? 0 : table_.recordEnds_.back();
    const auto fields = static_cast<qsizetype>(table_.fieldEnds_.size() - first);
    if (fields > maxColumns_)
        throw MalformedError(line_, "more columns than a grid holds");
    if (table_.recordCount() >= maxRecords_)
        throw MalformedError(line_, "more rows than a grid holds");
    table_.columnCount_ = std::max(table_.columnCount_, fields);
    table_.recordEnds_.push_back(table_.fieldEnds_.size());
    state_ = State::RecordStart;
}

// Takes the characters of an unquoted field up to the next separator, line
// break or end of text.
qsizetype Parser::scanUnquoted(QStringView text, qsizetype at)
{
    qsizetype end = at;
    while (end < text.size() && text[end] != separator_ && !isLineBreak(text[end]))
        ++end;
    table_.chars_.append(text.sliced(at, end - at));
    return end;
}

// Takes the characters of a quoted field up to the next quote.
qsizetype Parser::scanQuoted(QStringView text, qsizetype at)
{
    qsizetype end = text.indexOf(Quote, at);
    if (end < 0)
        end = text.size();
    for (qsizetype i = at; i < end; ++i) {
        if (isLineBreak(text[i]))
            lineBreak(text[i]);
        else
            afterCarriageReturn_ = false;
    }
    table_.chars_.append(text.sliced(at, end - at));
    return end;
}

void Parser::feed(QStringView text)
{
    if (!separator_.isNull())
        return consume(text);
    // The separator is chosen once the first lines are in.
    held_ += text;
    if (held_.count(u'\n') >= LinesForDetection || held_.size() >= HeldForDetection)
        detect();
}

void Parser::detect()
{
    separator_ = detectSeparator(held_);
    consume(std::exchange(held_, QString()));
}

void Parser::consume(QStringView text)
{
    qsizetype at = 0;
    while (at < text.size()) {
        const QChar c = text[at];
        switch (state_) {
        case State::Quoted:
            if (c == Quote) {
                state_ = State::QuoteInQuoted;
                ++at;
            } else {
                at = scanQuoted(text, at);
            }
            continue;
        case State::QuoteInQuoted:
            if (c == Quote) {
                table_.chars_.append(Quote);
                state_ = State::Quoted;
                ++at;
                continue;
            }
            if (c != separator_ && !isLineBreak(c))
                throw MalformedError(line_, "text after a closing quote");
            break;
        case State::Unquoted:
            if (c == separator_ || isLineBreak(c))
                break;
            at = scanUnquoted(text, at);
            continue;
        case State::RecordStart:
            // The \n of a \r\n that ended the record before.
            if (c == u'\n' && afterCarriageReturn_) {
                afterCarriageReturn_ = false;
                ++at;
                continue;
            }
            [[fallthrough]];
        case State::FieldStart:
            if (c == Quote) {
                state_ = State::Quoted;
                quoteLine_ = line_;
                afterCarriageReturn_ = false;
                ++at;
                continue;
            }
            if (c != separator_ && !isLineBreak(c)) {
                state_ = State::Unquoted;
                continue;
            }
            break;
        }
        // c ends a field: a separator or a line break.
        afterCarriageReturn_ = false;
        if (c == separator_)
            endField();
        else {
            endRecord();
            lineBreak(c);
        }
        ++at;
    }
}

Table Parser::finish()
{
    if (separator_.isNull())
        detect();
    if (state_ == State::Quoted)
        throw MalformedError(quoteLine_, "a quoted field is not closed");
    if (state_ != State::RecordStart)
        endRecord();
    return std::move(table_);
}

Table parse(QStringView text, QChar separator)
{
    Parser parser(separator);
    parser.feed(text);
    return parser.finish();
}

QChar detectSeparator(QStringView text)
{
    std::vector<std::array<int, Candidates.size()>> lines(1);
    bool quoted = false;
    for (qsizetype i = 0; i < text.size() && lines.size() <= LinesForDetection; ++i) {
        const QChar c = text[i];
        if (c == Quote)
            quoted = !quoted;
        else if (!quoted && c == u'\n')
            lines.emplace_back();
        for (size_t k = 0; k < Candidates.size(); ++k)
            lines.back()[k] += !quoted && c == Candidates[k];
    }
    // The last line may be cut short.
    if (lines.size() > 1)
        lines.pop_back();
    QChar best = Candidates[0];
    int64_t bestScore = 0;
    for (size_t k = 0; k < Candidates.size(); ++k) {
        int total = 0;
        bool consistent = true;
        for (const auto& counts : lines) {
            total += counts[k];
            consistent = consistent && counts[k] == lines.front()[k];
        }
        // A separator found the same number of times on every line wins
        // over one that is merely frequent.
        const int64_t score = int64_t{total} + (consistent && total > 0 ? int64_t{1} << 32 : 0);
        if (score > bestScore) {
            best = Candidates[k];
            bestScore = score;
        }
    }
    return best;
}

void appendField(QString& out, QStringView text, QChar separator)
{
    const bool quoted = std::any_of(text.begin(), text.end(), [separator](QChar c) {
        return c == separator || c == Quote || isLineBreak(c) ||
               std::find(Candidates.begin(), Candidates.end(), c) != Candidates.end();
    });
    if (!quoted) {
        out += text;
        return;
    }
    out += Quote;
    for (QChar c : text) {
        if (c == Quote)
            out += Quote;
        out += c;
    }
    out += Quote;
}

}  // namespace TabulaControl::detail::csv
