#include "tests/platform/childprocess.h"

#include "platform/win32/win32gate.h"
#include "tests/tempfolder.h"

namespace tests {
namespace {

// None of the tests' arguments holds a quote or ends in a backslash.
std::wstring commandLine(const std::filesystem::path& program,
                         const std::vector<std::u16string>& arguments) {
  std::wstring line = L"\"" + program.wstring() + L"\"";
  for (const auto& argument : arguments) line += L" \"" + platform::toWide(argument) + L"\"";
  return line;
}

}  // namespace

EchoResult runChild(const std::filesystem::path& program,
                    const std::vector<std::u16string>& arguments) {
  const TempFolder folder;
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  const HANDLE output = CreateFileW(folder.file("output").c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                    &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  STARTUPINFOW start = {};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdOutput = output;
  start.hStdError = output;
  PROCESS_INFORMATION child = {};
  std::wstring line = commandLine(program, arguments);
  const bool started = CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr,
                                      nullptr, &start, &child) != 0;
  DWORD exitCode = static_cast<DWORD>(-1);
  if (started) {
    WaitForSingleObject(child.hProcess, INFINITE);
    GetExitCodeProcess(child.hProcess, &exitCode);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
  }
  CloseHandle(output);
  return {static_cast<int>(exitCode), folder.read("output")};
}

}  // namespace tests
