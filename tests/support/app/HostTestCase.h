#pragma once

#include "WidgetTestCase.h"

#include <memory>

class CHostFixture;

// The base of the tests that drive a host: every test function starts with a new host shown
// on screen and ends with it gone. A class that needs more at the start keeps an init() of
// its own (it hides this one) and calls startHost() there; one that ends more overrides
// endTest() and calls this class's.
class CHostTestCase : public CWidgetTestCase
{
    Q_OBJECT
public:
    CHostTestCase();
    ~CHostTestCase() override;

protected:
    CHostFixture* host() const;
    // Ends the host there is, as quitting would, then shows a new one, as starting the program
    // again does; false when it did not come on screen.
    bool startHost();
    void endHost();
    void endTest() override;

private slots:
    void init();

private:
    std::unique_ptr<CHostFixture> m_pHost;
};
