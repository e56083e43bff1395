#pragma once

#include "VXLayoutStudyGridOptions.h"
#include "VXLayoutFigureSize.h"
#include "VXLayoutFigureOptions.h"

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QStringList>

// The command line of vxlayout: what to build and where to write it. Only the form of the
// arguments is checked here; the layout decides whether a style name or a file is usable.
class CVXLayoutBatchOptions
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutBatchOptions)
public:
    static constexpr int MaxSceneSide = 8000;
    static constexpr int MinDpi = 72;
    static constexpr int MaxDpi = 2400;

    // False with errorText() set when the arguments are not usable; help and version
    // requests parse.
    bool parse(const QStringList& arguments);

    bool isHelpRequested() const;
    bool isVersionRequested() const;
    QString layoutStyle() const;
    QSize sceneSize() const;
    QString exportPath() const;
    // The resolution asked for in dots per inch, 0 when none was.
    int dpi() const;
    QStringList inputPaths() const;
    bool isProvenanceRequested() const;
    // Empty when no Methods paragraph is wanted.
    QString methodsPath() const;
    const CVXLayoutStudyGridOptions& studyGrid() const;
    const CVXLayoutFigureSize& figureSize() const;
    QString errorText() const;
    const CVXLayoutFigureOptions& figureMarks() const { return m_figureMarks; }

    // The usage, options and a description naming the given layout styles.
    static QString helpText(const QStringList& styleNames);
    // "a", "b", "c"
    static QString quotedList(const QStringList& names);

private:
    bool parseSceneSize(const QString& strValue);
    bool parseDpi(const QString& strValue);

    bool m_bHelp = false;
    bool m_bVersion = false;
    QString m_strLayoutStyle;
    QSize m_sceneSize {1000, 800};
    QString m_strExportPath;
    int m_nDpi = 0;
    QStringList m_inputPaths;
    bool m_bProvenance = false;
    QString m_strMethodsPath;
    CVXLayoutStudyGridOptions m_studyGrid;
    CVXLayoutFigureSize m_figureSize;
    QString m_strError;
    CVXLayoutFigureOptions m_figureMarks;
};
