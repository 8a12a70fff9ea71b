#include "CenterResize.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <QtTest>

class TestCenterResize : public QObject
{
    Q_OBJECT

private slots:
    void percent_data();
    void percent();
    void neverMoves();
};

void TestCenterResize::percent_data()
{
    QTest::addColumn<int>("percent");
    QTest::addColumn<bool>("resized");
    QTest::newRow("0 leaves the size") << 0 << false;
    QTest::newRow("negative leaves the size") << -5 << false;
    QTest::newRow("60") << 60 << true;
    QTest::newRow("33 truncates") << 33 << true;
    QTest::newRow("100") << 100 << true;
}

void TestCenterResize::percent()
{
    QFETCH(int, percent);
    QFETCH(bool, resized);
    QWidget widget;
    widget.resize(123, 77);
    centerResize(widget, percent);
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    const QSize expected = resized ? QSize(int(available.width() / 100.0 * percent),
                                           int(available.height() / 100.0 * percent))
                                   : QSize(123, 77);
    QCOMPARE(widget.size(), expected);
}

void TestCenterResize::neverMoves()
{
    QWidget widget;
    widget.move(17, 23);
    centerResize(widget, 50);
    QCOMPARE(widget.pos(), QPoint(17, 23));
}

QTEST_MAIN(TestCenterResize)
#include "tst_centerresize.moc"
