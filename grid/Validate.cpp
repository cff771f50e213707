#include "grid/Grid.h"
#include "state/DateText.h"

namespace TabulaControl::detail {

QString Grid::Validate(const QString& text, int32_t col) const
{
    if (model.columns().mask(col) != DateOnly)
        return text;
    const QDate date = parseDateText(text);
    return date.isValid() ? date.toString(QStringLiteral("MM/dd/yyyy")) : QString();
}

}  // namespace TabulaControl::detail
