#ifndef DBSERVICE_DBACCESS_POOL_FORK_H
#define DBSERVICE_DBACCESS_POOL_FORK_H

namespace dbaccess {

/// How often this process was forked off another one, counted from the one that loaded the library:
/// what was made in another generation belongs to the parent process. Another thread may have held
/// any mutex at the fork, so this is asked before a mutex is taken.
///
/// Costs a load. A child that was made without fork's handlers (vfork, _Fork, clone) counts as its
/// parent. Threads: any number at once; also in the child of a process that had several.
unsigned int forkGeneration();

}  // namespace dbaccess

#endif
