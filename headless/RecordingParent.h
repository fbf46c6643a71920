#pragma once

#include <functional>
#include <string>
#include <vector>

#include "plugin/HostParent.h"

namespace kavrelon {

/// A host that keeps what it is told, and fails the member that it is to fail.
class RecordingParent final : public HostParent {
  public:
    /// The calls but those that ask, oldest first: "data" and "command" with the value after a blank,
    /// "closed" and "break".
    std::vector<std::string> calls;
    /// The member that fails after its call was kept: the word in `calls`, or "profile" or "ini".
    std::string failing;
    std::string iniFile = "/nowhere/settings.ini";
    /// Called with each call as it is kept: the member's name, and its value, null when it takes none.
    std::function<void(const char* member, const std::string* value)> onCall = [](const char*,
                                                                                  const std::string*) {};

    /// Called when the host is asked for something.
    std::function<void()> onAsk = [] {};

    void ParentSendData(const std::string& Value) override { keep("data", "ParentSendData", &Value); }
    void ParentWindowClosed() override { keep("closed", "ParentWindowClosed"); }
    void ParentSendBreak() override { keep("break", "ParentSendBreak"); }
    std::string ParentConnectionProfile() override {
        onAsk();
        return answer("profile", "default");
    }
    std::string ParentIniFile() override {
        onAsk();
        return answer("ini", iniFile);
    }
    void ParentSendCommand(const std::string& Value) override {
        keep("command", "ParentSendCommand", &Value);
    }

  private:
    void keep(const std::string& word, const char* member, const std::string* value = nullptr);
    std::string answer(const std::string& word, std::string value) const;
};

}  // namespace kavrelon
