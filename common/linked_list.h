// An ordered doubly linked list that owns its entries, and through them its values. Entries keep
// their place in memory while they are in the list.
#pragma once

#include <cassert>
#include <memory>
#include <utility>

namespace svcinst {

template <class T>
struct LinkedListEntry {
  T value;
  LinkedListEntry* previous = nullptr;
  LinkedListEntry* next = nullptr;
};

template <class T>
struct LinkedList {
  LinkedListEntry<T>* head = nullptr;  // first entry; none in an empty list
  LinkedListEntry<T>* tail = nullptr;  // last entry; none in an empty list

  LinkedList() = default;
  LinkedList(LinkedList&& other) noexcept
      : head(std::exchange(other.head, nullptr)), tail(std::exchange(other.tail, nullptr)) {}
  LinkedList& operator=(LinkedList&& other) noexcept {
    std::swap(head, other.head);
    std::swap(tail, other.tail);
    return *this;
  }
  ~LinkedList() {
    while (head != nullptr) remove_head(*this);
  }

  /// For a loop over the values, from the first to the last.
  struct Iterator {
    const LinkedListEntry<T>* entry;
    const T& operator*() const { return entry->value; }
    Iterator& operator++() {
      entry = entry->next;
      return *this;
    }
    bool operator==(const Iterator&) const = default;
  };
  [[nodiscard]] Iterator begin() const { return {head}; }
  [[nodiscard]] Iterator end() const { return {nullptr}; }
};

/// Puts `value` behind the last entry of `list`. Throws std::bad_alloc; `list` is then unchanged.
template <class T>
void append(LinkedList<T>& list, T value) {
  auto* entry = new LinkedListEntry<T>{std::move(value), list.tail, nullptr};
  (list.tail != nullptr ? list.tail->next : list.head) = entry;
  list.tail = entry;
}

/// Moves every entry of `source`, in order, in front of the first entry of `list`; `source` is then
/// empty.
template <class T>
void splice_front(LinkedList<T>& list, LinkedList<T>& source) noexcept {
  if (source.head == nullptr) return;
  source.tail->next = list.head;
  (list.head != nullptr ? list.head->previous : list.tail) = source.tail;
  list.head = source.head;
  source.head = source.tail = nullptr;
}

/// Frees the first entry of `list`, which must not be empty, with its value.
template <class T>
void remove_head(LinkedList<T>& list) noexcept {
  assert(list.head != nullptr);
  const std::unique_ptr<LinkedListEntry<T>> entry(list.head);
  list.head = entry->next;
  (list.head != nullptr ? list.head->previous : list.tail) = nullptr;
}

}  // namespace svcinst
