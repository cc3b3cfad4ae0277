// MFC's linked list.
#pragma once

#include "mfc/exception.h"
#include "mfc/position.h"
#include "mfc/string.h"

/// A doubly linked list. Positions stay good until their element is removed; a null position where
/// an element is needed raises CInvalidArgException.
///
/// @tparam T    element.
/// @tparam ARG  how elements are passed in: T, or the default const T&.
template <class T, class ARG = const T&>
class CList : public CObject {
public:
    CList() = default;
    explicit CList(INT_PTR /*blockSize*/) {}
    ~CList() override { RemoveAll(); }

    [[nodiscard]] INT_PTR GetCount() const { return count_; }
    [[nodiscard]] INT_PTR GetSize() const { return count_; }
    [[nodiscard]] BOOL IsEmpty() const { return count_ == 0 ? TRUE : FALSE; }

    [[nodiscard]] T& GetHead() { return node(position(head_))->value; }
    [[nodiscard]] const T& GetHead() const { return node(position(head_))->value; }
    [[nodiscard]] T& GetTail() { return node(position(tail_))->value; }
    [[nodiscard]] const T& GetTail() const { return node(position(tail_))->value; }
    [[nodiscard]] T& GetAt(POSITION at) { return node(at)->value; }
    [[nodiscard]] const T& GetAt(POSITION at) const { return node(at)->value; }
    void SetAt(POSITION at, ARG value) { node(at)->value = value; }

    [[nodiscard]] POSITION GetHeadPosition() const { return position(head_); }
    [[nodiscard]] POSITION GetTailPosition() const { return position(tail_); }
    /// The element at a position, which moves on.
    T& GetNext(POSITION& at) { return step(at, &Node::next); }
    const T& GetNext(POSITION& at) const { return step(at, &Node::next); }
    T& GetPrev(POSITION& at) { return step(at, &Node::previous); }
    const T& GetPrev(POSITION& at) const { return step(at, &Node::previous); }

    POSITION AddHead(ARG value) { return link(value, nullptr, head_); }
    POSITION AddTail(ARG value) { return link(value, tail_, nullptr); }
    void AddTail(const CList* other) {
        INT_PTR left = other->count_; // The list may be added to itself.
        for (Node* from = other->head_; left > 0; from = from->next, --left)
            AddTail(from->value);
    }
    POSITION InsertBefore(POSITION at, ARG value) {
        return link(value, node(at)->previous, node(at));
    }
    POSITION InsertAfter(POSITION at, ARG value) { return link(value, node(at), node(at)->next); }

    T RemoveHead() { return take(head_); }
    T RemoveTail() { return take(tail_); }
    void RemoveAt(POSITION at) { take(node(at)); }
    void RemoveAll() {
        while (head_ != nullptr)
            take(head_);
    }

    /// The first element equal to `value` after a position, from the head for null.
    [[nodiscard]] POSITION Find(ARG value, POSITION after = nullptr) const {
        Node* at = after == nullptr ? head_ : node(after)->next;
        while (at != nullptr && !(at->value == value))
            at = at->next;
        return position(at);
    }
    /// The position of the element with this index; null when there is none.
    [[nodiscard]] POSITION FindIndex(INT_PTR index) const {
        if (index < 0 || index >= count_) return nullptr;
        Node* at = head_;
        for (; index > 0; --index)
            at = at->next;
        return position(at);
    }

private:
    struct Node {
        T value;
        Node* previous;
        Node* next;
    };

    static POSITION position(Node* node) { return reinterpret_cast<POSITION>(node); }
    static Node* node(POSITION at) {
        if (at == nullptr) AfxThrowInvalidArgException();
        return reinterpret_cast<Node*>(at);
    }

    T& step(POSITION& at, Node* Node::*direction) const {
        Node* const here = node(at);
        at = position(here->*direction);
        return here->value;
    }

    POSITION link(ARG value, Node* previous, Node* next) {
        Node* const fresh = new Node{value, previous, next};
        (previous == nullptr ? head_ : previous->next) = fresh;
        (next == nullptr ? tail_ : next->previous) = fresh;
        ++count_;
        return position(fresh);
    }

    T take(Node* removed) {
        if (removed == nullptr) AfxThrowInvalidArgException();
        (removed->previous == nullptr ? head_ : removed->previous->next) = removed->next;
        (removed->next == nullptr ? tail_ : removed->next->previous) = removed->previous;
        --count_;
        T value = std::move(removed->value);
        delete removed;
        return value;
    }

    Node* head_ = nullptr;
    Node* tail_ = nullptr;
    INT_PTR count_ = 0;
};

class CStringList : public CList<CString, LPCTSTR> {};
