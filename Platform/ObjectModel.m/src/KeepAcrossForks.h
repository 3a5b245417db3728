#pragma once

#include <memory>
#include <pthread.h>

// Keeps a lock of the process usable in children: whoever forks waits until no other thread holds
// it, and the child finds it open. It is made anew there, after the unlocking that a thread
// sanitizer waits for: a child's thread is another one, by its number, than that which took it.
//
// `Lock` is a function that returns the lock. To be called once, before the lock is used.
template <auto Lock>
void KeepAcrossForks()
{
    pthread_atfork([] { Lock().lock(); }, [] { Lock().unlock(); },
                   [] {
                       Lock().unlock();
                       std::construct_at(&Lock());
                   });
}
