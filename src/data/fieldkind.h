#pragma once
// The kind of a result column, read back from the declared column types of the schema
// (INTEGER = 32-bit, SMALLINT = 16-bit, FLOAT = single, DOUBLE, CURRENCY, VARCHAR(n) = text of size n,
// TEXT = memo, BOOLEAN = yes/no, DATETIME = date). Computed columns take the kind of their first value.
enum class FieldKind { Empty, Integer16, Long, Single, Double, Currency, Text, Memo, Boolean, Date };

constexpr bool isWholeNumber(FieldKind k) {
    return k == FieldKind::Integer16 || k == FieldKind::Long;
}
constexpr bool isFraction(FieldKind k) {
    return k == FieldKind::Single || k == FieldKind::Double || k == FieldKind::Currency;
}
constexpr bool isNumeric(FieldKind k) {
    return isWholeNumber(k) || isFraction(k);
}
constexpr bool isText(FieldKind k) {
    return k == FieldKind::Text || k == FieldKind::Memo;
}
