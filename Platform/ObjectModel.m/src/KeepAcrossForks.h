#pragma once

#include <memory>
#include <pthread.h>

// Keeps a lock of the process usable in children: whoever forks waits until no other thread holds
// it, and the child finds it open. It is made anew there, as a child's thread is another one, by
// its number, than that which took the lock.
//
// `Lock` is a function that returns the lock. To be called once, before the lock is used.
template <auto Lock>
void KeepAcrossForks()
{
    pthread_atfork([] { Lock().lock(); }, [] { Lock().unlock(); },
                   [] { std::construct_at(&Lock()); });
}
