#pragma once

#include <QString>
#include <QStringView>

#include <cstdint>
#include <exception>
#include <vector>

namespace TabulaControl::detail::csv {

// The records of a comma-separated file. Every field's characters sit one
// after the other in one string, so a large file costs one allocation per
// growth of that string, not one per field.
class Table {
public:
    qsizetype recordCount() const { return static_cast<qsizetype>(recordEnds_.size()); }
    // The most fields any record has.
    qsizetype columnCount() const { return columnCount_; }
    qsizetype fieldCount(qsizetype record) const;
    // An empty view for a field past the end of a shorter record.
    QStringView field(qsizetype record, qsizetype index) const;

private:
    friend class Parser;
    QString chars_;
    std::vector<qsizetype> fieldEnds_;   // where each field ends in chars_
    std::vector<size_t> recordEnds_;     // the index past each record's last field
    qsizetype columnCount_ = 0;
};

// A malformed file: the physical line (from 1) where the fault lies.
class MalformedError : public std::exception {
public:
    MalformedError(qsizetype line, const char* fault) : line_(line), fault_(fault) {}
    qsizetype line() const { return line_; }
    const char* what() const noexcept override { return fault_; }

private:
    qsizetype line_;
    const char* fault_;
};

// Reads quoted fields as RFC 4180 has them: a field in double quotes may
// hold separators, quotes (doubled) and line breaks. Lines end in \n, \r\n
// or \r. A quote inside an unquoted field is kept as text. Text may arrive
// in pieces cut anywhere; a null separator is chosen from the first lines.
class Parser {
public:
    explicit Parser(QChar separator = {}, qsizetype maxRecords = INT32_MAX, qsizetype maxColumns = INT32_MAX);
    // Throws MalformedError, or when the limits are passed.
    void feed(QStringView text);
    Table finish();
    QChar separator() const { return separator_; }

private:
    enum class State { RecordStart, FieldStart, Unquoted, Quoted, QuoteInQuoted };
    void detect();
    void consume(QStringView text);
    qsizetype scanUnquoted(QStringView text, qsizetype at);
    qsizetype scanQuoted(QStringView text, qsizetype at);
    void lineBreak(QChar c);
    void endField();
    void endRecord();

    Table table_;
    QChar separator_;
    QString held_;  // text that came before the separator was chosen
    State state_ = State::RecordStart;
    bool afterCarriageReturn_ = false;
    qsizetype line_ = 1;
    qsizetype quoteLine_ = 0;
    qsizetype maxRecords_;
    qsizetype maxColumns_;
};

Table parse(QStringView text, QChar separator = {});

// The separator the first lines use most consistently: comma, semicolon or
// tab, counting only outside quotes; comma when none occurs.
QChar detectSeparator(QStringView text);

// Appends one field, quoted when it holds a separator, a quote, a tab or a
// line break.
void appendField(QString& out, QStringView text, QChar separator);

}  // namespace TabulaControl::detail::csv
