#pragma once

#include <QStringList>
#include <QVariant>

// Spells out cells with their types, because QVariant equality converts
// (QVariant(1) == QVariant("1")): "i:4" is an int, "s:a" a text, "null" an
// invalid variant, anything else "<type>:<text>".
inline QString cellText(QVariant const& v)
{
    if (!v.isValid())
        return QStringLiteral("null");
    switch (v.userType()) {
    case QMetaType::Int:
        return QStringLiteral("i:") + v.toString();
    case QMetaType::QString:
        return QStringLiteral("s:") + v.toString();
    default:
        return QString::fromLatin1(v.typeName()) + QLatin1Char(':') + v.toString();
    }
}

inline QString rowText(QList<QVariant> const& row)
{
    QStringList cells;
    for (QVariant const& v : row)
        cells << cellText(v);
    return cells.join(QLatin1Char('|'));
}

template <typename Table> QStringList gridText(Table const& table)
{
    QStringList rows;
    for (auto const& row : table.data())
        rows << rowText(row);
    return rows;
}
