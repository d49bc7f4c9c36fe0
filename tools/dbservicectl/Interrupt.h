#ifndef DBSERVICECTL_INTERRUPT_H
#define DBSERVICECTL_INTERRUPT_H

#include <string>

namespace dbservicectl {

/// What becomes of the reading of standard input when the program is interrupted meanwhile.
enum class WhileReading { GoOn, End };

/// From now on Ctrl-C and SIGTERM end long work between two of its steps; a second one ends the
/// program at once.
void watchForInterrupt(WhileReading reading = WhileReading::GoOn);

/// Ends the work by a Failure if it was interrupted. To be called between two steps, with the
/// database consistent.
/// @param howFar  what is done and how to go on, as "12000 of 40000 rows copied; run it again ...".
void throwIfInterrupted(const std::string& howFar);

}  // namespace dbservicectl

#endif
