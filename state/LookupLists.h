#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <vector>

namespace TabulaControl::detail::lookups {

// The lookup values of the columns, in the order they were added, with the
// host's item data, and the columns that show a button in their current
// cell. Columns are kept in 16 bits: a column past that range fails with
// the overflow error when it is added.
class LookupLists {
public:
    // One value as it is saved: the item data is not.
    struct SavedValue {
        int16_t column = 0;
        QString value;
    };

    void add(int32_t col, const QString& value, const QVariant& itemData);
    // The item data of the first such value; -1 when the column has no such
    // value.
    QVariant itemDataOf(int32_t col, const QString& value) const;
    // Removes the first such value.
    void removeValue(int32_t col, const QString& value);
    void removeColumn(int32_t col);
    void clear() { values_.clear(); }
    bool columnHasList(int32_t col) const;
    QStringList valuesOf(int32_t col) const;
    std::vector<SavedValue> savedValues() const;

    void addButtonColumn(int32_t col);
    void removeButtonColumn(int32_t col);
    bool isButtonColumn(int32_t col) const;

private:
    struct Value {
        int16_t column = 0;
        QString text;
        QVariant itemData;
    };

    // Every scan of the values counts them in 16 bits first.
    int16_t checkedCount() const;

    std::vector<Value> values_;
    std::vector<int16_t> buttonColumns_;
};

}  // namespace TabulaControl::detail::lookups
