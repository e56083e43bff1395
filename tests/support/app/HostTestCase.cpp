#include "HostTestCase.h"

#include "HostFixture.h"

#include <VXHostMainWindow.h>

CHostTestCase::CHostTestCase() = default;

CHostTestCase::~CHostTestCase() = default;

CHostFixture* CHostTestCase::host() const
{
    return m_pHost.get();
}

bool CHostTestCase::startHost()
{
    // One host at a time: the plugin object is the process's one, and the host owns it.
    endHost();
    m_pHost = std::make_unique<CHostFixture>();
    return QTest::qWaitForWindowExposed(m_pHost->window());
}

void CHostTestCase::endHost()
{
    m_pHost.reset();
}

void CHostTestCase::endTest()
{
    endHost();
}

void CHostTestCase::init()
{
    QVERIFY(startHost());
}
