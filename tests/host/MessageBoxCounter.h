#pragma once

#include <QObject>
#include <QStringList>

// Records the text of every message box shown while it exists. Boxes beyond the first
// nAnswered (those the test answers itself) are rejected at once, so a test that gets
// more boxes than it expects fails instead of hanging.
class CMessageBoxCounter : public QObject
{
    Q_OBJECT
public:
    explicit CMessageBoxCounter(int nAnswered);
    ~CMessageBoxCounter() override;

    int count() const;
    QStringList texts() const;

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    int m_nAnswered = 0;
    QStringList m_texts;
};
