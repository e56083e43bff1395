#include "progress/VXSLayoutWorkers.h"

#include <QThreadPool>

namespace {
// A progress job and a recovery copy may run at once.
constexpr int kLongJobsAtOnce = 2;
} // namespace

QThreadPool* CVXSLayoutWorkers::pool()
{
    static QThreadPool s_pool;
    if (s_pool.maxThreadCount() != kLongJobsAtOnce)
        s_pool.setMaxThreadCount(kLongJobsAtOnce);
    return &s_pool;
}
