// DebugOutput: text for an attached debugger (the log's output mode 2).
#pragma once

class DebugOutput {
  public:
    virtual ~DebugOutput() = default;
    virtual void Write(const char* text) = 0;
};
