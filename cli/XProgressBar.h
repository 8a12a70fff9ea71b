#pragma once

#include <QByteArray>
#include <QObject>

#include <cstdio>

// A one-line progress bar redrawn in place on a terminal stream.
class XProgressBar : public QObject
{
    Q_OBJECT

public:
    explicit XProgressBar(FILE* stream, QObject* parent = nullptr);
    ~XProgressBar() override;

public slots:
    void setPercent(int percent);
    // Follows the bar with the core size being searched.
    void setSearching(int size, int accessions);

private:
    void draw();

    FILE* m_stream;
    int m_percent = 0;
    QByteArray m_status;
    bool m_drawn = false;
};
