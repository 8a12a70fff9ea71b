#pragma once

#include <QTableView>

class XCsv;

// The table view for every table on screen: read-only in the main window,
// editable (with headers renamed by double-click) in the table editor.
class XCsvTableWidget : public QTableView
{
    Q_OBJECT

public:
    explicit XCsvTableWidget(bool const& readOnly, QWidget* parent = nullptr);
    ~XCsvTableWidget() override;

    // Shows the table through a new read-only model, or nothing for null.
    // The view owns the models it makes here and deletes the previous one;
    // a model given through setModel() stays its giver's.
    // The first markedRows accessions get a bold, tinted label.
    void setCsv(XCsv* csv, int const& markedRows = 0);
    // Deletes the replaced model when setCsv() made it.
    void setModel(QAbstractItemModel* model) override;

public slots:
    void renameHorizontalHeader(int section);
    void renameVerticalHeader(int section);

private:
    void rename(Qt::Orientation orientation, int section, QString const& title);
};
