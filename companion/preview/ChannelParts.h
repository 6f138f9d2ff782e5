#pragma once

#include <initializer_list>
#include <set>

#include "companion/preview/Channels.h"

namespace tavio::companion {

// What the channels of a preview are made of.

inline constexpr wchar_t kRecipients[] = L"TavioMSmsManager.clsBillUseInfo";
inline constexpr wchar_t kSmsGateway[] = L"MorlaMobileOpen.MobileOpen";

std::vector<const Call*> FindCalls(const Sending& sending, const wchar_t* progId, const wchar_t* member);
// The one request that the short-message gateway got; null if there is none.
const Snapshot* SmsRequest(const Sending& sending);
// A field of a record; 0 or empty if it is not there, or is none.
std::int32_t IdIn(const Snapshot& record);
Text TextIn(const Snapshot& record, TextView field);

Channel Start(ChannelKind kind, const Sending& sending, const ChannelInput& input);
void SetRequest(Channel& channel, const wchar_t* component, Json request);
// Ends a channel. `explained` tells whether its people make up the request, if there is one; `isLeft` whether anybody
// has an address or number that it could go to. Nobody gets what fails as a whole.
void Settle(Channel& channel, bool explained, bool isLeft);

// The first failure of a component that the channel cannot do without; empty if there was none.
Text FailureOf(const Sending& sending, const ChannelInput& input, std::initializer_list<const wchar_t*> needed);
bool IsRegistered(const wchar_t* progId);
// What keeps a channel from every recipient, by its list alone.
Text ListProblem(const Dictionary& list, const std::vector<Listed>& listed);
Text JoinedBoxes(const std::vector<Text>& boxes);

// The users of a list.
std::set<std::int32_t> IdsOf(const std::vector<Listed>& listed);
Person PersonOf(const Listed& listed, const Users& users);
// Whether the platform knows them, and lets them log in.
void TellOfUser(Person& person, const Users& users);
// Why the platform answered nothing about them.
Reason WhyUnanswered(const Person& person);

}  // namespace tavio::companion
