#include "documents/NamedBytes.h"

#include <stdexcept>

namespace lumo::documents {

Data NamedBytes::file(const std::string&) const { throw std::runtime_error("files cannot be read here"); }

}  // namespace lumo::documents
