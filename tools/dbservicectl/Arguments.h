#ifndef DBSERVICECTL_ARGUMENTS_H
#define DBSERVICECTL_ARGUMENTS_H

namespace dbservicectl {

/// Reads the command line and runs the command that it names. All options are made here alone: the
/// library for them takes long to compile.
/// @return  the exit code. Throws a Failure when the command cannot do its work.
int runCommand(int argc, char** argv);

}  // namespace dbservicectl

#endif
