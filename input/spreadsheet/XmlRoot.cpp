#include "XmlRoot.h"

#include <QXmlStreamReader>

bool readXmlRoot(QXmlStreamReader& xml)
{
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::Invalid:
            return false;
        default:
            break;
        }
    }
    return false;
}
