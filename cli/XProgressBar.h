#pragma once

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

private:
    FILE* m_stream;
    bool m_drawn = false;
};
