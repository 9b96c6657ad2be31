#pragma once

#include <string>
#include <string_view>

namespace xo::tool {

/// A predicate as the user writes it: a relation and a value, such as ">= 15".
struct PredicateText {
  /// `kXoBoundEqual` and its kind.
  unsigned short relation = 0;
  std::string value;
};

/// What is no predicate is `Trouble`. One blank may stand between the relation and the value; more
/// belong to the value.
PredicateText ParsePredicate(std::string_view text);

/// The sign of a relation, such as ">=".
std::string_view RelationSign(unsigned short relation);

}  // namespace xo::tool
