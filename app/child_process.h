// Children that end with their parent: a program this one starts (the local
// server, the program under test, a browser) must not run on after a timeout
// or a crash kills us.
#pragma once

// Run in the child between fork and exec (QProcess's child-process
// modifier): the child gets SIGTERM when its parent thread ends, and ends at
// once if the parent is already gone. Does nothing where Linux's
// PR_SET_PDEATHSIG is missing.
void EndWithParent(int parentPid);
