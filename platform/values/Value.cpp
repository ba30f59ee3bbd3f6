#include "LumoApi/Value.h"

#include <atomic>

namespace lumo {

struct Value::Node {
  explicit Node(Array&& value) noexcept : array(std::move(value)), isArray(true) {}
  explicit Node(Dictionary&& value) noexcept : dictionary(std::move(value)), isArray(false) {}

  std::atomic<std::size_t> references{1};
  Node* next = nullptr;  // the list of nodes to destroy, used by release() alone
  Array array;
  Dictionary dictionary;
  bool isArray;
};

Value::Value() noexcept = default;
Value::Value(const Value&) = default;
Value::Value(Value&&) noexcept = default;
Value& Value::operator=(const Value&) = default;
Value& Value::operator=(Value&&) noexcept = default;
Value::~Value() = default;

Value::Value(Array value) : content_(NodeRef(new Node(std::move(value)))) {}

Value::Value(Dictionary value) : content_(NodeRef(new Node(std::move(value)))) {}

const Value::Array* Value::asArray() const noexcept {
  const Node* held = node();
  return held && held->isArray ? &held->array : nullptr;
}

const Value::Dictionary* Value::asDictionary() const noexcept {
  const Node* held = node();
  return held && !held->isArray ? &held->dictionary : nullptr;
}

Value::NodeRef::NodeRef(const NodeRef& other) noexcept : node_(other.node_) {
  if (node_) node_->references.fetch_add(1, std::memory_order_relaxed);
}

// Takes the nodes apart one after the other instead of one inside the other: a node that nobody else holds
// hands its own nodes to a list that is threaded through them, so neither stack nor memory is needed for any
// depth.
void Value::release(Node* node) noexcept {
  Node* doomed = nullptr;
  const auto drop = [&doomed](Node* dropped) noexcept {
    if (!dropped || dropped->references.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
    dropped->next = doomed;
    doomed = dropped;
  };
  const auto dropChild = [&drop](Value& child) noexcept {
    if (NodeRef* reference = std::get_if<NodeRef>(&child.content_)) drop(reference->take());
  };
  drop(node);
  while (doomed) {
    Node* current = doomed;
    doomed = current->next;
    for (Value& child : current->array) dropChild(child);
    for (auto& entry : current->dictionary.entries_) dropChild(entry.value);
    delete current;
  }
}

bool Value::equal(const Value& a, const Value& b) {
  std::vector<std::pair<const Value*, const Value*>> pending{{&a, &b}};
  while (!pending.empty()) {
    const auto [left, right] = pending.back();
    pending.pop_back();
    const Node* leftNode = left->node();
    const Node* rightNode = right->node();
    if (!leftNode || !rightNode) {
      if (left->content_.index() != right->content_.index()) return false;
      const bool same = std::visit(
          [right = right](const auto& held) {
            using Held = std::remove_cvref_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, NodeRef>) {
              return false;
            } else {
              return held == std::get<Held>(right->content_);
            }
          },
          left->content_);
      if (!same) return false;
      continue;
    }
    if (leftNode == rightNode) continue;
    if (leftNode->isArray != rightNode->isArray || leftNode->array.size() != rightNode->array.size() ||
        leftNode->dictionary.size() != rightNode->dictionary.size()) {
      return false;
    }
    for (std::size_t i = 0; i < leftNode->array.size(); ++i) {
      pending.emplace_back(&leftNode->array[i], &rightNode->array[i]);
    }
    for (const auto& entry : leftNode->dictionary) {
      const Value* other = rightNode->dictionary.find(entry.key);
      if (!other) return false;
      pending.emplace_back(&entry.value, other);
    }
  }
  return true;
}

}  // namespace lumo
