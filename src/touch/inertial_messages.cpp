// The typed methods of the list over its table of operations, and the one entry of its messages.
#include <algorithm>

#include "touch/inertial_list.h"

namespace touch {
namespace {

template <typename Type>
Type& At(intptr_t address) {
  return *reinterpret_cast<Type*>(address);
}

// 0x10030 to 0x10044.
constexpr bool IsColour(uint32_t message) {
  return message >= ILM_SETCOLOR && message < ILM_SETCOLOR + 2 * kListColourCount;
}

}  // namespace

void InertList::Reset() {
  ops_.As<StoreFunction>(kOpClear)(store_);
  Repaint();
}

int InertList::Add(const InertItem& item) {
  Repaint();
  return ops_.As<AddFunction>(kOpAdd)(store_, item);
}

int InertList::Insert(int index, const InertItem& item) {
  Repaint();
  return ops_.As<InsertFunction>(kOpInsert)(store_, index, item);
}

int InertList::Delete(int index) {
  Repaint();
  return ops_.As<DeleteFunction>(kOpDelete)(store_, index);
}

int InertList::Find(int start, const InertItem& item) {
  return ops_.As<FindFunction>(kOpFind)(store_, start, item);
}

int InertList::Count() const {
  return ops_.As<CountFunction>(kOpCount)(store_);
}

int InertList::GetItem(int index, InertItem& item) {
  return ops_.As<GetItemFunction>(kOpGetItem)(store_, index, item);
}

int InertList::SetItem(int index, const InertItem& item) {
  Repaint();
  return ops_.As<InsertFunction>(kOpSetItem)(store_, index, item);
}

int InertList::GetData(int index) {
  return ops_.As<DeleteFunction>(kOpGetData)(store_, index);
}

int InertList::SetData(int index, int value) {
  return ops_.As<SetNumberFunction>(kOpSetData)(store_, index, value);
}

int InertList::GetHeight(int index) const {
  if (index == -1) return defaultHeight_;
  const int own = ops_.As<DeleteFunction>(kOpGetHeight)(store_, index);
  return own == -1 ? defaultHeight_ : own;
}

int InertList::SetHeight(int index, int height) {
  Repaint();
  if (index != -1) return ops_.As<SetNumberFunction>(kOpSetHeight)(store_, index, height);
  defaultHeight_ = height;
  return 0;
}

std::u16string InertList::GetText(int index) const {
  return ops_.As<GetTextFunction>(kOpGetText)(store_, index);
}

int InertList::SetTop(int index) {
  if (index < 0 || index >= Count()) return -1;
  top_ = index;
  Repaint();
  return 0;
}

int InertList::SetSelected(int index) {
  if (index < 0 || index >= Count()) return -1;
  pressRow_ = index;
  Repaint();
  return 0;
}

void InertList::ChangeStyle(int clear, int set) {
  style_ = (style_ & ~clear) | set;
  Repaint();
}

void InertList::SetFont(intptr_t font) {
  if (window_.takeFont) defaultHeight_ = window_.takeFont(font);
}

void InertList::CancelPress() {
  pressed_ = false;
  if (window_.releaseCapture) window_.releaseCapture();
}

void InertList::Repaint() const {
  if (window_.repaint) window_.repaint();
}

void InertList::Notify(int code) const {
  if (window_.notifyParent) window_.notifyParent(code);
}

intptr_t InertList::Send(uint32_t message, intptr_t wparam, intptr_t lparam) {
  const int number = static_cast<int>(wparam);
  if (IsColour(message)) {
    const auto which = static_cast<ListColour>((message - ILM_SETCOLOR) / 2);
    if (message % 2 != 0) return Colour(which);
    SetColour(which, static_cast<uint32_t>(lparam));
    return 0;
  }
  switch (message) {
    case WM_SETFONT:
      SetFont(wparam);
      return 0;
    case WM_GETFONT:
      return window_.font ? window_.font() : 0;
    case ILM_GETTOP:
      return Top();
    case ILM_SETTOP:
      return SetTop(number);
    case ILM_GETSEL:
      return Selected();
    case ILM_SETSEL:
      return SetSelected(number);
    case ILM_SETOP:
      return ops_.Set(number, reinterpret_cast<ItemStoreOps::Function>(lparam));
    case ILM_GETOP:
      return reinterpret_cast<intptr_t>(ops_.Get(number));
    case ILM_ISDRAGGING:
      return IsDragging() ? 1 : 0;
    case ILM_SETSTYLE:
      ChangeStyle(number, static_cast<int>(lparam));
      return 0;
    case ILM_GETSTYLE:
      return Style() & number;
    case ILM_CANCELPRESS:
      CancelPress();
      return 0;
    default:
      return SendForRows(message, number, lparam);
  }
}

intptr_t InertList::SendForRows(uint32_t message, int index, intptr_t lparam) {
  switch (message) {
    case ILM_RESET:
      Reset();
      return 0;
    case ILM_ADD:
      return Add(At<InertItem>(lparam));
    case ILM_INSERT:
      return Insert(index, At<InertItem>(lparam));
    case ILM_DELETE:
      return Delete(index);
    case ILM_FIND:
      return Find(index, At<InertItem>(lparam));
    case ILM_GETDATA:
      return GetData(index);
    case ILM_SETDATA:
      return SetData(index, static_cast<int>(lparam));
    case ILM_COUNT:
      return Count();
    case ILM_GETITEMRECT:
      if (GetHeight(index) == kBadIndex) return kBadIndex;
      At<ListRect>(lparam) = {0, 0, width_, GetHeight(index)};
      return 0;
    case ILM_GETHEIGHT:
      return GetHeight(index);
    case ILM_SETHEIGHT:
      return SetHeight(index, static_cast<int>(lparam));
    case ILM_GETITEM:
      return GetItem(index, At<InertItem>(lparam));
    case ILM_SETITEM:
      return SetItem(index, At<InertItem>(lparam));
    case ILM_FREEITEM:
      ops_.As<FreeItemFunction>(kOpFreeItem)(At<InertItem>(lparam));
      return 0;
    default:
      return 0;
  }
}

}  // namespace touch
