#include "progress/VXSLayoutWorkers.h"

#include <QThreadPool>

namespace {
// A progress job and a recovery copy may run at once.
constexpr int kLongJobsAtOnce = 2;
} // namespace

QThreadPool* CVXSLayoutWorkers::pool()
{
    static QThreadPool* const s_pPool = [] {
        static QThreadPool pool;
        pool.setMaxThreadCount(kLongJobsAtOnce);
        return &pool;
    }();
    return s_pPool;
}
