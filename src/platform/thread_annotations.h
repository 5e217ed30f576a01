// Names the lock that a field or function needs, so that clang proves it (-Wthread-safety). Other
// compilers see nothing.
#pragma once

#if defined(__clang__)
#define KORVU_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define KORVU_THREAD_ATTRIBUTE(x)
#endif

#define CAPABILITY(name) KORVU_THREAD_ATTRIBUTE(capability(name))
#define SCOPED_CAPABILITY KORVU_THREAD_ATTRIBUTE(scoped_lockable)
#define GUARDED_BY(lock) KORVU_THREAD_ATTRIBUTE(guarded_by(lock))
#define REQUIRES(...) KORVU_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define EXCLUDES(...) KORVU_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define ACQUIRE(...) KORVU_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define TRY_ACQUIRE(...) KORVU_THREAD_ATTRIBUTE(try_acquire_capability(__VA_ARGS__))
#define RELEASE(...) KORVU_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
