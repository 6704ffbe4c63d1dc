#include "tests/base/settings/killedprogram.h"

#include "platform/text.h"
#include "platform/win32/win32gate.h"

namespace tests {
namespace {

std::wstring commandLineOf(const std::filesystem::path& program,
                           const std::vector<std::string>& arguments) {
  std::wstring line = L"\"" + program.wstring() + L"\"";
  for (const std::string& text : arguments) {
    line += L" \"" + platform::toWide(platform::fromSystem(text)) + L"\"";
  }
  return line;
}

bool start(const std::filesystem::path& program, const std::vector<std::string>& arguments,
           HANDLE output, PROCESS_INFORMATION& process) {
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output;
  startup.hStdError = output;
  std::wstring line = commandLineOf(program, arguments);
  return CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process) != 0;
}

bool append(HANDLE pipe, std::string& text) {
  char block[4096];
  DWORD got = 0;
  if (!ReadFile(pipe, block, sizeof block, &got, nullptr) || got == 0) return false;
  text.append(block, got);
  return true;
}

}  // namespace

std::string runAndKill(const std::filesystem::path& program,
                       const std::vector<std::string>& arguments, int microseconds) {
  SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
  HANDLE reader = nullptr;
  HANDLE writer = nullptr;
  if (!CreatePipe(&reader, &writer, &inherited, 0)) return {};
  SetHandleInformation(reader, HANDLE_FLAG_INHERIT, 0);
  PROCESS_INFORMATION process = {};
  const bool started = start(program, arguments, writer, process);
  CloseHandle(writer);
  std::string said;
  if (started) {
    if (append(reader, said)) Sleep(static_cast<DWORD>(microseconds) / 1000);
    TerminateProcess(process.hProcess, 9);
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
  }
  while (append(reader, said)) {
  }
  CloseHandle(reader);
  return said;
}

}  // namespace tests
