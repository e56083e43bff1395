#pragma once

#include <QStringList>
#include <QTimer>

// While it lives, closes every modal widget that comes up (a test expects none) and
// records its class name, so a check that nothing asked the user cannot hang.
class CModalWatch
{
public:
    CModalWatch();
    ~CModalWatch();

    // Class names of the modal widgets seen so far, after giving pending ones time to show.
    QStringList seen();

private:
    void closeActiveModal();

    QTimer m_timer;
    QStringList m_seen;
};
