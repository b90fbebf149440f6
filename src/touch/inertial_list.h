// A list for a finger: one column of rows that follows a drag and, on release, coasts with constant
// deceleration; with kWrap an endless wheel. Here is all of it but the window: its state, its steps
// and what it paints. The window hands in pointer, keys, size and a tick every 20 ms of a coast.
// Interface thread only.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

#include "touch/inertial_items.h"

namespace touch {

// Messages, the list's interface for those who have nothing but its number: wparam and lparam as
// Send takes them.
enum ListMessage : uint32_t {
  WM_SETFONT = 0x30,
  WM_GETFONT = 0x31,
  ILM_RESET = 0x10001,
  ILM_ADD,
  ILM_INSERT,
  ILM_DELETE,
  ILM_FIND,
  ILM_GETDATA,
  ILM_SETDATA,
  ILM_COUNT,
  ILM_GETITEMRECT,
  ILM_GETHEIGHT = 0x10011,
  ILM_SETHEIGHT,
  ILM_GETITEM,
  ILM_SETITEM,
  ILM_FREEITEM,
  ILM_GETTOP = 0x10020,
  ILM_SETTOP,
  ILM_GETSEL,
  ILM_SETSEL,
  ILM_SETCOLOR = 0x10030,  // and every second one up to 0x10044: a ListColour each
  ILM_GETCOLOR = 0x10031,
  ILM_SETOP = 0x10060,
  ILM_GETOP,
  ILM_ISDRAGGING,
  ILM_SETSTYLE = 0x10064,
  ILM_GETSTYLE,
  ILM_CANCELPRESS
};

// Sent to the list's owner.
inline constexpr int ILN_COASTSTART = 1280;
inline constexpr int ILN_COASTEND = 1281;

inline constexpr int ILS_WRAP = 2;    // the rows repeat endlessly
inline constexpr int ILS_SHADOW = 4;  // the texts have a shadow

// In the order of their messages. Colours are 0xBBGGRR.
enum ListColour {
  kUnderRows,
  kRowText,
  kUnusedRow,  // kept, not painted
  kRowShadow,
  kRowBack,
  kRowLine,
  kPressedText,
  kUnusedPressed,  // kept, not painted
  kPressedShadow,
  kPressedBack,
  kPressedLine,
  kListColourCount
};

struct ListPoint {
  int x = 0;
  int y = 0;
};

struct ListRect {
  int left = 0;
  int top = 0;
  int right = 0;  // the first pixel outside
  int bottom = 0;
};

// How the row texts are drawn, from the low bits of a window's style.
struct RowTextFormat {
  enum class Align { kBegin, kCentre, kEnd };

  Align across = Align::kBegin;
  Align down = Align::kBegin;
  bool breaksWords = false;   // else a single line
  bool cutsAnywhere = false;  // the ellipsis follows any character, otherwise a word

  static RowTextFormat OfStyle(int windowStyle);
};

// What the rows are painted on.
class ListCanvas {
 public:
  virtual ~ListCanvas() = default;
  virtual void Fill(const ListRect& area, uint32_t colour) = 0;
  // `row` names the text, so that its layout can be kept.
  virtual void DrawText(const ListRect& area, int row, std::u16string_view text,
                        uint32_t colour) = 0;
};

enum class ListKey { kHome, kEnd, kUp, kDown };

class InertList {
 public:
  // What the list asks of its window; each may stay empty.
  struct Window {
    std::function<void()> repaint;
    std::function<void(int code)> notifyParent;
    std::function<void()> releaseCapture;
    // Takes a copy of a font, whose address this is, and answers the height of its text.
    std::function<int(intptr_t font)> takeFont;
    std::function<intptr_t()> font;  // the address of the window's own
  };

  // `screenLength` is the longer side of the screen: a drag begins at a fiftieth of it.
  InertList(Window window, int style, int screenLength);

  // One entry for all messages. Items, rectangles and functions go in lparam as addresses.
  intptr_t Send(uint32_t message, intptr_t wparam, intptr_t lparam);

  // Rows.
  void Reset();
  int Add(const InertItem& item);
  int Insert(int index, const InertItem& item);
  int Delete(int index);
  // From `start` on, a negative one meaning 0: the row with the same text, kNoItem or kBadIndex.
  int Find(int start, const InertItem& item);
  int Count() const;
  int GetItem(int index, InertItem& item);
  int SetItem(int index, const InertItem& item);
  int GetData(int index);
  int SetData(int index, int value);
  // Index -1 is the default height.
  int GetHeight(int index) const;
  int SetHeight(int index, int height);
  std::u16string GetText(int index) const;
  ItemStoreOps& Ops() { return ops_; }

  int Top() const { return top_; }
  int SetTop(int index);  // 0, or -1 out of range
  // The row under the press, -1 for none.
  int Selected() const { return pressRow_; }
  int SetSelected(int index);  // 0, or -1 out of range
  bool IsDragging() const { return dragging_; }
  bool IsCoasting() const { return coasting_; }
  // A row is shown pressed only from press to release.
  bool ShowsPressed(int row) const { return pressed_ && row == pressRow_; }
  int Style() const { return style_; }
  void ChangeStyle(int clear, int set);
  uint32_t Colour(ListColour which) const { return colours_[which]; }
  void SetColour(ListColour which, uint32_t colour) { colours_[which] = colour; }
  // The address of a font that is needed for this call only.
  void SetFont(intptr_t font);
  void CancelPress();

  // Window.
  void Resize(int width, int height);
  void Press(ListPoint point, uint32_t tick);
  void Move(ListPoint point, uint32_t tick);
  void Release(ListPoint point, uint32_t tick);
  // Ends a coast where it is.
  void StopCoast();
  // 20 ms of a coast have passed.
  void CoastTick();
  void Key(ListKey key);
  void Paint(ListCanvas& canvas);

  // The row that covers the window's top edge when `start` has its top `offset` pixels below that
  // edge, and in `y` that row's top, 0 or less.
  int RowAtOffset(int start, int offset, int& y) const;
  int LastTopRow() const;

 private:
  bool Wraps() const { return (style_ & ILS_WRAP) != 0; }
  int RowHeight(int row) const;
  void StartCoast(int dy, uint32_t dt);
  void CoastStep();
  void EndCoast();
  void Repaint() const;
  void Notify(int code) const;
  intptr_t SendForRows(uint32_t message, int index, intptr_t lparam);

  Window window_;
  ItemStoreOps ops_;
  mutable ItemStore store_;  // its operations may be another's
  int style_;
  int top_ = 0;
  int pressRow_ = -1;
  bool dragging_ = false;  // the rows follow the pointer, or coast
  bool pressed_ = false;
  int threshold_;
  ListPoint press_, current_;  // in a coast, current_.y is the moved point
  ListPoint fling_;            // from where a fling is measured
  uint32_t flingTick_ = 0;
  int direction_ = 0;  // 1 the pointer goes down, -1 up
  int defaultHeight_ = 1;
  int width_ = 0;
  int height_ = 0;
  std::array<uint32_t, kListColourCount> colours_;

  // The coast.
  bool coasting_ = false;
  bool stop_ = true;
  float speed_ = 0.0f;         // pixels a millisecond
  float deceleration_ = 0.0f;  // against the speed
  int stepsToRest_ = 0;
  int step_ = 0;
  int lastWay_ = 0;
};

// The first forms of the two paint operations.
void ListRow(InertList& list, ListCanvas& canvas, int row, const ListRect& area);
void ListEmptyRow(InertList& list, ListCanvas& canvas, int row, const ListRect& area);

}  // namespace touch
