// The cells of a table, found by their categories.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace BayesHost {

// A cell as a reader sees it, valid until the next one is written.
struct Cell {
  bool fIsWritten = false;        // false: it bears nothing but footnotes
  std::optional<double> fNumber;  // none: a text alone
  std::string_view fText;
  std::span<const int> fNotes;  // indices of the table's footnotes
};

// In the order of their first writing. A document may hold a hundred thousand tables and a table as many
// cells: one takes some 40 bytes and its text, and a look-up allocates nothing.
class CellStore {
 public:
  // One category for each dimension of the table; all addresses of a store are equally long.
  using Address = std::span<const int>;

  std::size_t Count() const { return fvContents.size(); }
  Address GetAddress(std::size_t cell) const;
  bool HasNotes() const { return !fNotes.empty(); }
  // Nothing where nothing was written.
  std::optional<Cell> Find(Address address) const;

  // A second write replaces the first.
  void Write(Address address, std::string_view text, std::optional<double> number);
  // Adds a footnote that the cell doesn't bear yet.
  void Note(Address address, int note);

 private:
  enum class Kind : std::uint8_t { Unwritten, Text, Number };
  struct Content {
    double fNumber = 0;
    std::size_t fTextBegin = 0;
    std::uint32_t fTextSize = 0;
    Kind fKind = Kind::Unwritten;
  };

  std::size_t FindOrAdd(Address address);
  std::size_t FindIndex(Address address) const;
  std::size_t FindPlace(Address address) const;
  void MakePlaces();

  std::size_t fAddressSize = 0;
  std::vector<Content> fvContents;
  std::vector<int> fvAddresses;  // one after the other
  std::string fTexts;            // likewise
  std::map<std::size_t, std::vector<int>> fNotes;
  // Open addressing: cells by the hash of their addresses, counted from 1; 0 is a free place. Empty while
  // cells are so few that looking at all of them is as fast.
  std::vector<std::uint32_t> fvPlaces;
};

}  // namespace BayesHost
