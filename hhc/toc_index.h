#pragma once

// #TOCIDX: the table of contents in binary form, and the numbering of its entries that #TOPICS uses
// even when the stream is not written.
//
// Format: a page of 0x1000 bytes with the offsets of the entries, of the groups, their number, and
// the offset of the topic list. Entries, 20 bytes (pages) or 28 bytes (books), in breadth-first
// order, none across a page: WORD 0, WORD group, DWORD flags, DWORD topic number or #STRINGS offset
// of the name, DWORD parent, DWORD next sibling, for books DWORD first child and DWORD 0. The topic
// list has a DWORD topic number for each entry with a page, depth first; then, at a multiple of 16,
// a group for each book, depth first: DWORD entry offset, DWORD 0x29A + number, DWORD offset in the
// topic list of its first topic, DWORD number of its topics.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace scrivo {

struct TocNode {
  int level = 0;  // 0 at the top, at most one more than the node before
  std::optional<std::uint32_t> topic;
  std::uint32_t name = 0;  // #STRINGS offset, for nodes without a topic
  bool is_new = false;
};

class TocIndex {
 public:
  // Takes the nodes in the order of the contents file, depth first.
  explicit TocIndex(std::vector<TocNode> nodes);

  // The numbers of the nodes, breadth first: siblings stand together, the top level first.
  const std::vector<std::size_t>& BreadthFirst() const { return order_; }

  // The offset of a node's entry in #TOCIDX.
  std::uint32_t EntryOffset(std::size_t node) const { return offsets_[node]; }

  TocNode& Node(std::size_t number) { return nodes_[number]; }

  std::vector<std::uint8_t> Write() const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  struct Links {
    std::size_t parent = kNone, next = kNone, first_child = kNone;
  };
  // What the depth-first walk gives for each book.
  struct Group {
    std::size_t node = 0;
    std::uint32_t first_topic = 0, topic_count = 0;
  };

  void Link();
  void Order();
  std::vector<Group> Groups(std::vector<std::uint32_t>* topic_list,
                            std::vector<std::uint32_t>* group_of) const;
  std::uint32_t OffsetOrZero(std::size_t node) const { return node == kNone ? 0 : offsets_[node]; }

  std::vector<TocNode> nodes_;
  std::vector<Links> links_;
  std::vector<std::size_t> order_;
  std::vector<std::uint32_t> offsets_;
  std::uint32_t entries_end_ = 0;
};

}  // namespace scrivo
