#ifndef DBSERVICECTL_DIAGRAM_H
#define DBSERVICECTL_DIAGRAM_H

#include <string>

namespace dbservicectl {

/// The tables, their keys and what refers to what, as Graphviz source.
std::string diagram();

}  // namespace dbservicectl

#endif
