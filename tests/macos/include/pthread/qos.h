#pragma once

// Stands for <pthread/qos.h> and, of <sys/qos.h>, what it takes.

#ifdef __cplusplus
extern "C" {
#endif

typedef enum qos_class_t : unsigned int {
    QOS_CLASS_USER_INTERACTIVE = 0x21,
} qos_class_t;

int pthread_set_qos_class_self_np(qos_class_t qosClass, int relativePriority);

#ifdef __cplusplus
}
#endif
