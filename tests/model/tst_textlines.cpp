#include "TextLines.h"

#include <QTextStream>
#include <QtTest>

namespace {

QStringList split(QString const& text)
{
    QStringList lines;
    TextLines walker(text);
    QStringRef line;
    while (walker.next(line))
        lines << line.toString();
    return lines;
}

} // namespace

class TestTextLines : public QObject
{
    Q_OBJECT

private slots:
    void lines_data();
    void lines();
    void agreesWithTextStream_data();
    void agreesWithTextStream();
    void nextAfterEndKeepsFailing();
};

void TestTextLines::lines_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("empty") << QString() << QStringList();
    QTest::newRow("one line") << QStringLiteral("a,b") << QStringList{"a,b"};
    QTest::newRow("final line feed") << QStringLiteral("a\n") << QStringList{"a"};
    QTest::newRow("two line feeds") << QStringLiteral("a\n\n") << QStringList{"a", ""};
    QTest::newRow("only a line feed") << QStringLiteral("\n") << QStringList{""};
    QTest::newRow("blank line inside") << QStringLiteral("a\n\nb") << QStringList{"a", "", "b"};
    QTest::newRow("windows endings") << QStringLiteral("a\r\nb\r\n") << QStringList{"a", "b"};
    QTest::newRow("windows empty line") << QStringLiteral("\r\n\r\n") << QStringList{"", ""};
    QTest::newRow("lone carriage return kept") << QStringLiteral("a\rb") << QStringList{"a\rb"};
    QTest::newRow("carriage return at the end") << QStringLiteral("a\r") << QStringList{"a"};
    QTest::newRow("only one carriage return goes")
        << QStringLiteral("a\r\r\nb\r\r") << QStringList{"a\r", "b\r"};
    QTest::newRow("byte-order mark dropped") << QStringLiteral("\xFEFF"
                                                               "a\nb")
                                             << QStringList{"a", "b"};
    QTest::newRow("only a byte-order mark") << QStringLiteral("\xFEFF") << QStringList();
    QTest::newRow("byte-order mark later kept") << QStringLiteral("a\n\xFEFF"
                                                                  "b")
                                                << QStringList{"a", QStringLiteral("\xFEFF"
                                                                                   "b")};
}

void TestTextLines::lines()
{
    QFETCH(QString, text);
    QFETCH(QStringList, lines);
    QCOMPARE(split(text), lines);
}

void TestTextLines::agreesWithTextStream_data()
{
    QTest::addColumn<QString>("text");
    QRandomGenerator rng(7);
    const QChar alphabet[] = {QLatin1Char('a'), QLatin1Char(','), QLatin1Char('\n'),
                              QLatin1Char('\r'), QLatin1Char('1')};
    for (int n = 0; n < 300; ++n) {
        QString text;
        const int length = int(rng.bounded(12));
        for (int i = 0; i < length; ++i)
            text += alphabet[rng.bounded(5)];
        QTest::addRow("random %d", n) << text;
    }
}

// The tables once read their text with QTextStream::readLine; the walker
// must split every text the same way.
void TestTextLines::agreesWithTextStream()
{
    QFETCH(QString, text);
    QString copy = text;
    QTextStream stream(&copy, QIODevice::ReadOnly);
    QStringList expected;
    while (!stream.atEnd())
        expected << stream.readLine();
    QCOMPARE(split(text), expected);
}

void TestTextLines::nextAfterEndKeepsFailing()
{
    const QString text = QStringLiteral("x\n");
    TextLines walker(text);
    QStringRef line;
    QVERIFY(!walker.atEnd());
    QVERIFY(walker.next(line));
    QCOMPARE(line.toString(), QStringLiteral("x"));
    QVERIFY(walker.atEnd());
    QVERIFY(!walker.next(line));
    QVERIFY(!walker.next(line));
}

QTEST_GUILESS_MAIN(TestTextLines)
#include "tst_textlines.moc"
