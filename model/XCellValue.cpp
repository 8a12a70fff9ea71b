#include "XCellValue.h"

#include "StrictInt.h"

#include <climits>

namespace {

bool isIntegral(int type)
{
    switch (type) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return true;
    default:
        return false;
    }
}

bool isFloating(int type)
{
    return type == QMetaType::Double || type == QMetaType::Float;
}

bool isNumeric(int type)
{
    return isIntegral(type) || isFloating(type);
}

} // namespace

bool XCellValue::equals(QVariant const& left, QVariant const& right)
{
    const int lt = left.userType();
    const int rt = right.userType();
    if (isNumeric(lt) && isNumeric(rt)) {
        if (isIntegral(lt) && isIntegral(rt))
            return left.toLongLong() == right.toLongLong();
        return left.toDouble() == right.toDouble();
    }
    if (lt == rt)
        return left == right;
    if (isNumeric(lt) && rt == QMetaType::QString) {
        bool ok = false;
        const int value = strictToInt(right.toString(), &ok);
        if (!ok)
            return false;
        return isIntegral(lt) ? left.toLongLong() == value : left.toDouble() == value;
    }
    if (lt == QMetaType::QString && isNumeric(rt))
        return left.toString() == right.toString();
    return left == right;
}

int XCellValue::toInt(QVariant const& cell, bool* ok)
{
    *ok = false;
    const int type = cell.userType();
    if (isIntegral(type)) {
        const qlonglong value = cell.toLongLong();
        if (value < INT_MIN || value > INT_MAX)
            return 0;
        *ok = true;
        return int(value);
    }
    if (isFloating(type)) {
        const double value = cell.toDouble();
        if (!(value >= INT_MIN && value <= INT_MAX) || value != double(qint64(value)))
            return 0;
        *ok = true;
        return int(value);
    }
    if (type == QMetaType::QString)
        return strictToInt(cell.toString(), ok);
    return 0;
}

QString const& XCellValue::missingMark()
{
    static const QString mark(QStringLiteral("*"));
    return mark;
}

bool XCellValue::isMissing(QVariant const& cell)
{
    static const QVariant missing(missingMark());
    return equals(cell, missing);
}

int XCellValue::alleleNumber(QVariant const& cell, bool* ok)
{
    const int value = toInt(cell, ok);
    if (value < 0)
        *ok = false;
    return value;
}

bool XCellValue::isAllele(QVariant const& cell)
{
    if (isMissing(cell))
        return true;
    bool ok = false;
    alleleNumber(cell, &ok);
    return ok;
}
