#pragma once

#include "AnalysisInputs.h"
#include "XAnalysisRequest.h"
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
    // The files the analysis was read from, which no save or export may
    // replace; empty for one read from a workspace file or built by hand.
    // Not part of the text form.
    AnalysisInputs const& inputs() const { return m_inputs; }
    void setInputs(AnalysisInputs const& inputs) { m_inputs = inputs; }

    // The search that made the result and the settings it ran with, kept in
    // the settings section so that a run can be told and repeated later.
    // search() is "reproducible", "exact", or empty when nothing says.
    QString search() const;
    // The search that made the result: the exact one when the settings say
    // so, or say nothing and carry lower bounds (files written before the
    // search was recorded: lower bounds only ever came with it).
    XSearchKind searchKind() const;
    // Records the search's kind and the settings it reads (iterations and
    // seed, or the budget), and for the exact search how many seconds it ran.
    void setRun(XSearchSettings const& settings, double const& seconds = -1.0);
    // Each -1 when not recorded or not a whole number.
    int iterations() const;
    int seed() const;
    int budget() const;
    // The exact search's running time in seconds; negative when not recorded.
    double seconds() const;

    // Whether this holds a whole analysis that can be shown: an input table
    // with a header row and at least one data row, every line as wide as the
    // header; a starting collection exactly when hasSource(), with the same
    // header row; a result of 100 well-formed entries naming only data rows;
    // and nothing but blank lines after the last whole workspace in the text.
    bool isComplete() const { return problem().isEmpty(); }
    // Why isComplete() is false, for the user: "it does not hold a whole
    // analysis", or what is wrong on which line of the text ("line 12: ...");
    // empty when it is true. Whether a search could have written the result
    // is a question for XWorkspaceCheck, which knows the searches.
    QString problem() const;

    // Where the last workspace read from text stands in it: the line (from
    // 1) of each setting and the first line of each section; 0 for what was
    // not read. Not part of the text form.
    struct Lines
    {
        QMap<QString, int> settings;
        int input = 0;
        int start = 0;
        int result = 0;
    };
    Lines const& lines() const { return m_lines; }
    // "line 12: what" for a line read; just what for line 0.
    static QString atLine(int line, QString const& what);

    QString toString() const override;
    void fromString(QString& text) override;

private:
    int wholeSetting(QString const& key) const;

    XCsv* m_csv = nullptr;
    XCsv* m_src = nullptr;
    XResult* m_result = nullptr;
    QString m_savePath;
    AnalysisInputs m_inputs;
    QMap<QString, QVariant> m_settings;
    bool m_cutOff = false;
    Lines m_lines;
};
