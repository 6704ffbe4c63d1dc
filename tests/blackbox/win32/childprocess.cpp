#include "tests/blackbox/childprocess.h"

#include <map>

#include "platform/text.h"
#include "platform/win32/win32gate.h"

namespace tests {
namespace {

// Quoted so that the usual splitting gives the argument back. Some of the system's programs split
// in a way of their own and know their options without quotes alone.
std::wstring quoted(const std::wstring& argument) {
  if (!argument.empty() && argument.find_first_of(L" \t\"") == argument.npos) return argument;
  std::wstring out = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t unit : argument) {
    if (unit == L'"') out.append(backslashes + 1, L'\\');
    backslashes = unit == L'\\' ? backslashes + 1 : 0;
    out += unit;
  }
  out.append(backslashes, L'\\');
  return out + L"\"";
}

std::wstring commandLineOf(const Child& child) {
  std::wstring line = quoted(child.program.wstring());
  for (const std::string& argument : child.arguments) {
    line += L" " + quoted(platform::toWide(platform::fromSystem(argument)));
  }
  return line;
}

std::wstring environmentOf(const Child& child) {
  std::map<std::wstring, std::wstring> values;
  wchar_t* const block = GetEnvironmentStringsW();
  for (const wchar_t* entry = block; *entry != 0; entry += wcslen(entry) + 1) {
    const std::wstring text = entry;
    const std::size_t equals = text.find(L'=', 1);
    if (equals != text.npos) values[text.substr(0, equals)] = text.substr(equals + 1);
  }
  FreeEnvironmentStringsW(block);
  for (const auto& [name, value] : child.environment) {
    const std::wstring key = platform::toWide(platform::fromSystem(name));
    values.erase(key);
    if (value) values[key] = platform::toWide(platform::fromSystem(*value));
  }
  std::wstring out;
  for (const auto& [name, value] : values) out += name + L"=" + value + L'\0';
  return out + L'\0';
}

HANDLE openInherited(const std::wstring& file, DWORD access, DWORD disposition) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  return CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                     disposition, 0, nullptr);
}

HANDLE openOutput(ChildOutput where, const std::filesystem::path& file) {
  if (where == ChildOutput::none) return nullptr;
  if (where == ChildOutput::captured) {
    return openInherited(file.wstring(), GENERIC_WRITE, CREATE_ALWAYS);
  }
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  HANDLE reader = nullptr;
  HANDLE writer = nullptr;
  if (CreatePipe(&reader, &writer, &inherited, 0)) CloseHandle(reader);
  return writer;
}

void waitWithLimit(HANDLE process, const Child& child, ChildResult& result) {
  const DWORD limit = static_cast<DWORD>(child.seconds) * 1000;
  if (WaitForSingleObject(process, limit) == WAIT_TIMEOUT) {
    result.timedOut = true;
    TerminateProcess(process, 9);
    WaitForSingleObject(process, INFINITE);
  }
  DWORD code = 0;
  GetExitCodeProcess(process, &code);
  result.exitCode = code;
}

}  // namespace

void runToFiles(const Child& child, const std::filesystem::path& output,
                const std::filesystem::path& errors, ChildResult& result) {
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = openInherited(L"NUL", GENERIC_READ, OPEN_EXISTING);
  start.hStdOutput = openOutput(child.outputTo, output);
  start.hStdError = openOutput(child.errorsTo, errors);
  std::wstring line = commandLineOf(child);
  std::wstring environment = environmentOf(child);
  const std::wstring directory = child.directory.wstring();
  PROCESS_INFORMATION process = {};
  result.started =
      CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_UNICODE_ENVIRONMENT,
                     environment.data(), directory.empty() ? nullptr : directory.c_str(), &start,
                     &process) != 0;
  if (result.started) {
    waitWithLimit(process.hProcess, child, result);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  for (const HANDLE handle : {start.hStdInput, start.hStdOutput, start.hStdError}) {
    if (handle != nullptr) CloseHandle(handle);
  }
}

std::filesystem::path programFileName(std::string_view stem) { return std::string(stem) + ".exe"; }

}  // namespace tests
