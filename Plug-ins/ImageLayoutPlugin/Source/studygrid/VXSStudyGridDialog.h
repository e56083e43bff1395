#pragma once

#include <VXImagePage.h>

#include <QDialog>
#include <QStringList>
#include <QVector>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;

// "New Study Grid": the image files of a study (or the images open in the host's image
// windows), the image keys that make its rows and its
// columns, the display range (all values, or given) and whether a colour bar goes with it.
class CVXSStudyGridDialog : public QDialog
{
    Q_OBJECT
public:
    explicit CVXSStudyGridDialog(QWidget* pParent = nullptr);

    // The files listed; the open images listed come from openImages().
    QStringList files() const;
    void setFiles(const QStringList& files);
    QVector<CVXImagePage> openImages() const;
    QString rowKey() const;
    QString columnKey() const;
    // Whether a range was given; its ends then hold numbers with the minimum below.
    bool hasRange() const;
    double minimum() const;
    double maximum() const;
    bool hasColourBar() const;

    void accept() override;

private:
    void onClickAddFiles();
    void onClickAddOpenImages();
    void onClickRemoveFiles();
    void updateRangeEdits();
    // Empty when what was chosen can make a grid, else what is missing.
    QString problem() const;
    static QComboBox* keyCombo(const QString& strName, const QString& strKey, QWidget* pParent);

    QListWidget* m_pFileList = nullptr;    // the widgets are children of the dialog
    // The pictures of the open image windows added; list entries of them name their index.
    QVector<CVXImagePage> m_openImages;
    QComboBox* m_pRowKeyCombo = nullptr;
    QComboBox* m_pColumnKeyCombo = nullptr;
    QCheckBox* m_pRangeCheck = nullptr;
    QLineEdit* m_pMinimumEdit = nullptr;
    QLineEdit* m_pMaximumEdit = nullptr;
    QCheckBox* m_pColourBarCheck = nullptr;
    QLabel* m_pProblemLabel = nullptr;
};
