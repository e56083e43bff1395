#pragma once

class QThreadPool;

// The threads the window's long jobs (saving, opening, exporting, printing, recovery copies)
// run on. Those jobs share their own work out on Qt's global pool and wait for it; run on
// that pool as well, two of them at once would hold every thread of a two-core machine while
// waiting for work no thread is left to do.
class CVXSLayoutWorkers
{
public:
    static QThreadPool* pool();
};
