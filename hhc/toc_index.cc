#include "hhc/toc_index.h"

#include <algorithm>
#include <utility>

#include "bytes/byte_writer.h"
#include "hhc/strings_table.h"

namespace scrivo {
namespace {

constexpr std::uint32_t kLeafSize = 20, kBookSize = 28;
constexpr std::uint32_t kFlagNew = 2, kFlagHasTopic = 8;
constexpr std::uint32_t kBookFlags = 0x105;      // children, and what every book has
constexpr std::uint32_t kFlagPastGroups = 0x40;  // the groups ran out before this book
constexpr std::uint32_t kGroupBase = 0x29A;
constexpr std::size_t kMostGroups = 0xFFFF;  // group numbers have 16 bits

}  // namespace

TocIndex::TocIndex(std::vector<TocNode> nodes) : nodes_(std::move(nodes)) {
  Link();
  Order();
}

void TocIndex::Link() {
  links_.resize(nodes_.size());
  std::vector<std::size_t> open;  // the last node of each level above
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    const std::size_t level =
        std::min(static_cast<std::size_t>(std::max(0, nodes_[i].level)), open.size());
    nodes_[i].level = static_cast<int>(level);
    if (level < open.size()) links_[open[level]].next = i;
    if (level > 0) {
      links_[i].parent = open[level - 1];
      if (level == open.size()) links_[open[level - 1]].first_child = i;
    }
    open.resize(level);
    open.push_back(i);
  }
}

void TocIndex::Order() {
  order_.reserve(nodes_.size());
  for (std::size_t i = nodes_.empty() ? kNone : 0; i != kNone; i = links_[i].next) {
    order_.push_back(i);
  }
  for (std::size_t at = 0; at < order_.size(); ++at) {
    for (std::size_t i = links_[order_[at]].first_child; i != kNone; i = links_[i].next) {
      order_.push_back(i);
    }
  }
  offsets_.resize(nodes_.size());
  std::uint32_t offset = kStreamPage;
  for (const std::size_t i : order_) {
    const std::uint32_t size = links_[i].first_child == kNone ? kLeafSize : kBookSize;
    const std::uint32_t left = kStreamPage - offset % kStreamPage;
    if (size > left) offset += left;
    offsets_[i] = offset;
    offset += size;
  }
  entries_end_ = offset;
}

std::vector<TocIndex::Group> TocIndex::Groups(std::vector<std::uint32_t>* topic_list,
                                              std::vector<std::uint32_t>* group_of) const {
  std::vector<Group> groups;
  group_of->assign(nodes_.size(), 0);
  std::vector<std::pair<std::size_t, std::size_t>> open;  // book, its group
  for (std::size_t i = 0; i < nodes_.size(); ++i) {
    while (!open.empty() && static_cast<int>(open.size()) > nodes_[i].level) {
      Group& group = groups[open.back().second];
      if (group.node == open.back().first) {
        group.topic_count = static_cast<std::uint32_t>(topic_list->size()) - group.first_topic;
      }
      open.pop_back();
    }
    const auto listed = static_cast<std::uint32_t>(topic_list->size());
    if (nodes_[i].topic) topic_list->push_back(*nodes_[i].topic);
    (*group_of)[i] = open.empty() ? 0 : static_cast<std::uint32_t>(open.back().second);
    if (links_[i].first_child == kNone) continue;
    if (groups.size() < kMostGroups) groups.push_back({i, listed, 0});
    open.emplace_back(i, groups.size() - 1);
    (*group_of)[i] = static_cast<std::uint32_t>(groups.size() - 1);
  }
  for (; !open.empty(); open.pop_back()) {
    Group& group = groups[open.back().second];
    if (group.node == open.back().first) {
      group.topic_count = static_cast<std::uint32_t>(topic_list->size()) - group.first_topic;
    }
  }
  return groups;
}

std::vector<std::uint8_t> TocIndex::Write() const {
  std::vector<std::uint32_t> topic_list, group_of;
  const std::vector<Group> groups = Groups(&topic_list, &group_of);
  const std::uint32_t list_offset = entries_end_;
  const std::size_t list_end = list_offset + topic_list.size() * 4;
  const std::uint32_t groups_offset = static_cast<std::uint32_t>((list_end + 15) / 16 * 16);

  ByteWriter out;
  out.Put32(kStreamPage);
  out.Put32(groups_offset);
  out.Put32(static_cast<std::uint32_t>(groups.size()));
  out.Put32(list_offset);
  for (const std::size_t i : order_) {
    out.PadTo(offsets_[i]);
    const bool is_book = links_[i].first_child != kNone;
    std::uint32_t flags = nodes_[i].topic ? kFlagHasTopic : 0;
    if (nodes_[i].is_new) flags |= kFlagNew;
    if (is_book) {
      flags |= kBookFlags;
      if (groups[group_of[i]].node != i) flags |= kFlagPastGroups;
    }
    out.Put16(0);
    out.Put16(static_cast<std::uint16_t>(group_of[i]));
    out.Put32(flags);
    out.Put32(nodes_[i].topic ? *nodes_[i].topic : nodes_[i].name);
    out.Put32(OffsetOrZero(links_[i].parent));
    out.Put32(OffsetOrZero(links_[i].next));
    if (is_book) {
      out.Put32(OffsetOrZero(links_[i].first_child));
      out.Put32(0);
    }
  }
  out.PadTo(list_offset);
  for (const std::uint32_t topic : topic_list) out.Put32(topic);
  out.PadTo(groups_offset);
  for (std::size_t i = 0; i < groups.size(); ++i) {
    out.Put32(offsets_[groups[i].node]);
    out.Put32(kGroupBase + static_cast<std::uint32_t>(i));
    out.Put32(list_offset + groups[i].first_topic * 4);
    out.Put32(groups[i].topic_count);
  }
  return out.Take();
}

}  // namespace scrivo
