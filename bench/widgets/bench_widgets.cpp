// Figures for large tables in the table model and the table editor.
// Usage: bench_widgets [--compare]
// Runs on the offscreen platform unless QT_QPA_PLATFORM says otherwise.
// --compare also times the editor with the toolkit's own resize-to-contents
// mode on both headers, which the view avoids: it measures every section
// again after each edit and each resize.

#include "XCsv.h"
#include "XCsvEditor.h"
#include "XCsvTableModel.h"
#include "XCsvTableWidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTextStream>

#include <algorithm>

namespace {

QTextStream out(stdout);

XCsv::Grid uniformGrid(int rows, int columns, QString const& value)
{
    XCsv::Grid grid;
    XCsv::Row header{QStringLiteral("Name")};
    for (int c = 0; c < columns; ++c)
        header << QStringLiteral("M%1").arg(c / 2 + 1);
    grid << header;
    for (int r = 0; r < rows; ++r) {
        XCsv::Row row{QStringLiteral("Acc%1").arg(r + 1)};
        for (int c = 0; c < columns; ++c)
            row << value;
        grid << row;
    }
    return grid;
}

// Allele values as the editors store them (text), with missing values and a
// few invalid cells.
XCsv::Grid alleleGrid(int rows, int columns)
{
    QRandomGenerator rng(42);
    XCsv::Grid grid = uniformGrid(rows, columns, QString());
    for (int r = 1; r <= rows; ++r) {
        for (int c = 1; c <= columns; ++c) {
            const int roll = int(rng.bounded(1000));
            if (roll < 50)
                grid[r][c] = QStringLiteral("*");
            else if (roll < 52)
                grid[r][c] = QStringLiteral("x");
            else
                grid[r][c] = QString::number(90 + rng.bounded(200));
        }
    }
    return grid;
}

void benchCheck()
{
    const int rows = 2000, columns = 400;
    XCsv csv(uniformGrid(rows, columns, QStringLiteral("x")));
    QElapsedTimer timer;
    timer.start();
    XCsvTableModel model(&csv, false, nullptr);
    const qint64 first = timer.elapsed();
    timer.restart();
    model.check();
    const qint64 again = timer.elapsed();
    out << "check, " << rows << " x " << columns << ", every cell invalid ("
        << model.errors().size() << " errors): first " << first << " ms, again " << again
        << " ms\n";
    timer.restart();
    for (int c = 0; c < columns; ++c)
        model.setData(model.index(rows / 2, c), QStringLiteral("1"));
    model.removeRows(0, 1);
    model.insertRows(1, 1);
    model.check();
    out << "  fixing a row, removing and inserting a row, check again: " << timer.elapsed()
        << " ms\n";
}

struct Scroll
{
    qint64 worst = 0;
    double mean = 0;
};

// Pages through the view, painting after every step as the screen would.
Scroll scroll(QAbstractItemView* view, QScrollBar* bar, int steps)
{
    Scroll result;
    qint64 total = 0;
    QElapsedTimer timer;
    for (int i = 1; i <= steps; ++i) {
        timer.start();
        bar->setValue(bar->minimum() + (bar->maximum() - bar->minimum()) * i / steps);
        QCoreApplication::processEvents();
        view->viewport()->repaint();
        const qint64 t = timer.nsecsElapsed() / 1000;
        result.worst = std::max(result.worst, t);
        total += t;
    }
    result.mean = double(total) / steps;
    return result;
}

void benchEditor(bool toolkitSizing, QString const& label)
{
    const int rows = 1350, columns = 1356;
    XCsv csv(alleleGrid(rows, columns));
    QElapsedTimer timer;
    timer.start();
    XCsvEditor editor(&csv, true, nullptr);
    auto* view = editor.findChild<XCsvTableWidget*>();
    if (toolkitSizing) {
        view->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
        view->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    }
    editor.resize(1200, 800);
    editor.show();
    QCoreApplication::processEvents();
    editor.repaint();
    const qint64 open = timer.elapsed();

    const Scroll down = scroll(view, view->verticalScrollBar(), 40);
    const Scroll right = scroll(view, view->horizontalScrollBar(), 40);

    auto* model = qobject_cast<XCsvTableModel*>(view->model());
    timer.restart();
    model->setData(model->index(rows - 1, columns - 1), QStringLiteral("bad"));
    QCoreApplication::processEvents();
    view->viewport()->repaint();
    const qint64 edit = timer.nsecsElapsed() / 1000;
    timer.restart();
    model->insertRows(1, 1);
    QCoreApplication::processEvents();
    view->viewport()->repaint();
    const qint64 insert = timer.elapsed();

    out << "editor, " << rows << " x " << columns << ", " << label << ": open " << open
        << " ms; scroll step (40 steps down, then right) mean " << qRound(down.mean) / 1000.0
        << " / " << qRound(right.mean) / 1000.0 << " ms, worst " << down.worst / 1000.0 << " / "
        << right.worst / 1000.0 << " ms; edit a cell " << edit / 1000.0 << " ms; insert a row "
        << insert << " ms\n";
    out << "  first column " << view->horizontalHeader()->sectionSize(0) << " px, first row "
        << view->verticalHeader()->sectionSize(0) << " px, row header "
        << view->verticalHeader()->width() << " px\n";
    out.flush();
}

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const bool compare = app.arguments().contains(QStringLiteral("--compare"));
    benchCheck();
    out.flush();
    benchEditor(false, QStringLiteral("headers fitted by the view"));
    if (compare)
        benchEditor(true, QStringLiteral("the toolkit's resize-to-contents mode"));
    return 0;
}
