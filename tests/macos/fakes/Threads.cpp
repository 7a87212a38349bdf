#include <pthread/qos.h>

#include "fakes/MacJournal.h"

int pthread_set_qos_class_self_np(qos_class_t qosClass, int relativePriority) {
    kestrelbay::macos::record(QStringLiteral("pthread_set_qos_class_self_np 0x%1 %2")
                                  .arg(unsigned{qosClass}, 0, 16)
                                  .arg(relativePriority));
    return 0;
}
