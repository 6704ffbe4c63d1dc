#include "platform/progresswindow.h"

#include <string>

#include "platform/process.h"
#include "platform/win32/win32gate.h"

namespace platform {

struct ProgressWindow::State {
  HWND window = nullptr;
  HWND bar = nullptr;
  HWND commandText = nullptr;
  HWND actionText = nullptr;
  HICON icon = nullptr;
  HFONT boldFont = nullptr;
  HFONT plainFont = nullptr;
};

namespace {

constexpr int windowWidth = 600;
constexpr int windowHeight = 130;
constexpr DWORD windowStyle = 0x90c80000;
constexpr DWORD childStyle = 0x50000000;

struct Place {
  int x, y, width, height;
};

HWND makeWindow(const wchar_t* windowClass, const wchar_t* title, DWORD style, Place place,
                HWND parent) {
  return CreateWindowExW(0, windowClass, title, style, place.x, place.y, place.width, place.height,
                         parent, nullptr, static_cast<HINSTANCE>(instanceHandle()), nullptr);
}

HFONT makeFont(int weight) {
  return CreateFontW(16, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                     CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, L"Arial");
}

void send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  SendMessageW(window, message, wParam, lParam);
}

Place middleOfScreen() {
  return {(GetSystemMetrics(SM_CXSCREEN) - windowWidth) / 2,
          (GetSystemMetrics(SM_CYSCREEN) - windowHeight) / 2, windowWidth, windowHeight};
}

void prepareBar(HWND bar) {
  send(bar, PBM_SETRANGE, 0, MAKELPARAM(0, 100));
  send(bar, PBM_SETSTEP, 2, 0);
  send(bar, PBM_SETBARCOLOR, 0, 0x19FF19);
  send(bar, PBM_SETPOS, 0, 0);
}

}  // namespace

bool ProgressWindow::create() {
  destroy();
  InitCommonControls();
  constexpr int longestPath = 1024;
  const std::wstring path = toWide(executablePath(longestPath));
  const std::wstring title = path.substr(path.rfind(L'\\') + 1);
  const HWND window =
      makeWindow(L"msctls_progress32", title.c_str(), windowStyle, middleOfScreen(), nullptr);
  if (window == nullptr) return false;
  state_ = new State;
  state_->window = window;
  state_->bar = makeWindow(L"msctls_progress32", L"", childStyle, {5, 70, 585, 30}, window);
  state_->commandText = makeWindow(L"Static", L"", childStyle, {5, 5, 585, 30}, window);
  state_->actionText = makeWindow(L"Static", L"", childStyle, {5, 35, 585, 30}, window);
  state_->boldFont = makeFont(FW_BOLD);
  state_->plainFont = makeFont(FW_NORMAL);
  state_->icon = ExtractIconW(static_cast<HINSTANCE>(instanceHandle()), path.c_str(), 0);
  send(window, WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(state_->icon));
  prepareBar(state_->bar);
  send(state_->commandText, WM_SETFONT, reinterpret_cast<WPARAM>(state_->boldFont), TRUE);
  send(state_->actionText, WM_SETFONT, reinterpret_cast<WPARAM>(state_->plainFont), TRUE);
  return true;
}

void ProgressWindow::destroy() {
  if (state_ == nullptr) return;
  DestroyWindow(state_->window);
  DeleteObject(state_->boldFont);
  DeleteObject(state_->plainFont);
  if (state_->icon != nullptr) DestroyIcon(state_->icon);
  delete state_;
  state_ = nullptr;
}

void ProgressWindow::setCommandText(std::u16string_view text) {
  if (state_ != nullptr) SetWindowTextW(state_->commandText, toWide(text).c_str());
}

void ProgressWindow::setActionText(std::u16string_view text) {
  if (state_ != nullptr) SetWindowTextW(state_->actionText, toWide(text).c_str());
}

void ProgressWindow::setPercent(int percent) {
  if (state_ != nullptr) send(state_->bar, PBM_SETPOS, static_cast<WPARAM>(percent), 0);
}

void ProgressWindow::pump() {
  if (state_ == nullptr) return;
  MSG message = {};
  const int result = GetMessageW(&message, state_->window, 0, 0);
  obeyWindowMessage(result, message.message, message.wParam);
}

}  // namespace platform
