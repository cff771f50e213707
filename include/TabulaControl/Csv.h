#pragma once

#include <QChar>

namespace TabulaControl {

// How Tabula::loadCsv reads and Tabula::saveCsv writes comma-separated text.
struct CsvOptions {
    // The field separator; a null character has loadCsv choose comma,
    // semicolon or tab from the first lines, and saveCsv write commas.
    QChar separator;
    // Whether the first line holds the column captions (row 0).
    bool headerRow = true;
};

}  // namespace TabulaControl
