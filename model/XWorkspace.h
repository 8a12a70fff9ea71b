#pragma once

#include "XFile.h"

#include <QMap>
#include <QVariant>

class XCsv;
class XResult;

// One whole analysis: input table, optional starting collection, result,
// named settings ("HasSource", "SliderValue", the search and its settings)
// and the last save path. Its text form is the content of a workspace file.
// Owns its three objects.
class XWorkspace : public XFile
{
    Q_OBJECT

public:
    XWorkspace(XCsv* csv, XCsv* src, XResult* result, QObject* parent = nullptr);
    // A file name or the workspace text (see readTextSource).
    explicit XWorkspace(QString const& source, QObject* parent = nullptr);
    ~XWorkspace() override;

    XCsv* csv() const { return m_csv; }
    XCsv* src() const { return m_src; }
    XResult* result() const { return m_result; }

    bool hasSource() const;
    // The slider position, or -1 when there is none.
    int slider() const;
    void setSlider(int const& value);
    QString savePath() const { return m_savePath; }
    void setSavePath(QString const& path) { m_savePath = path; }
    QMap<QString, QVariant> const& settings() const { return m_settings; }

    // The search that made the result and the settings it ran with, kept in
    // the settings section so that a run can be told and repeated later.
    // search() is "reproducible", "exact", or empty when nothing says.
    QString search() const;
    void setReproducibleRun(int const& iterations, int const& seed);
    void setExactRun(int const& budgetSeconds, double const& seconds);
    // Each -1 when not recorded or not a whole number.
    int iterations() const;
    int seed() const;
    int budget() const;
    // The exact search's running time in seconds; negative when not recorded.
    double seconds() const;

    // Whether this holds a whole analysis that can be shown: an input table
    // with a header row and at least one data row, every row as wide as the
    // header; a starting collection exactly when hasSource(), with the same
    // header row; a result of 100 well-formed entries naming only data rows;
    // and nothing but blank lines after the last whole workspace in the text.
    bool isComplete() const;

    QString toString() const override;
    void fromString(QString& text) override;

private:
    int wholeSetting(QString const& key) const;

    XCsv* m_csv = nullptr;
    XCsv* m_src = nullptr;
    XResult* m_result = nullptr;
    QString m_savePath;
    QMap<QString, QVariant> m_settings;
    bool m_cutOff = false;
};
