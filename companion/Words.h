#pragma once

#include "foundation/values/Error.h"

namespace tavio::companion {

// A text of the companion's pages and messages in the languages that it has.
struct Word {
  const wchar_t* chinese;
  const wchar_t* english;
};

// In the client's language, which is read once per process: English if it is an English one, else Chinese.
Text Say(const Word& word);
bool SpeaksEnglish();

// What the user reads of a failure: localised, or, without the platform's texts, in the system's own words.
Text WordsOf(const Error& error);

namespace words {

inline constexpr Word kPreview = {L"消息预览", L"Message preview"};
inline constexpr Word kTitle = {L"标题", L"Title"};
inline constexpr Word kWithCaptions = {L"设计时", L"As designed"};
inline constexpr Word kWithValues = {L"接收时", L"As received"};
inline constexpr Word kVariables = {L"变元", L"Variables"};
inline constexpr Word kOthers = {L"未使用的变元", L"Variables not used"};
inline constexpr Word kPerson = {L"人员", L"Person"};
inline constexpr Word kPeople = {L"谁会收到", L"Who gets it"};
inline constexpr Word kRequests = {L"发送请求", L"Requests"};
inline constexpr Word kBoxes = {L"提示框", L"Message boxes"};
inline constexpr Word kNothingSent = {L"不发送", L"nothing is sent"};
inline constexpr Word kNobody = {L"没有人员", L"nobody"};
inline constexpr Word kOf = {L"/", L" of "};

inline constexpr Word kSystemMessage = {L"系统消息", L"System message"};
inline constexpr Word kMail = {L"邮件", L"Mail"};
inline constexpr Word kShortMessage = {L"短消息", L"Short message"};
inline constexpr Word kApproval = {L"审批通知", L"Approval notice"};

inline constexpr Word kGets = {L"收到", L"gets it"};
inline constexpr Word kByField = {L"由单据字段", L"by bill field"};
inline constexpr Word kPerhapsByField = {L"由单据字段之一", L"by one of the bill fields"};
inline constexpr Word kExcluded = {L"被排除", L"excluded"};
inline constexpr Word kUnknown = {L"用户不存在", L"no such user"};
inline constexpr Word kForbidden = {L"用户已禁用", L"user is forbidden"};
inline constexpr Word kUnanswered = {L"平台没有此人的资料", L"the platform does not know the address"};
inline constexpr Word kSentAllTheSame = {L"仍会发送", L"sent all the same"};
inline constexpr Word kNoAddress = {L"没有邮箱地址", L"has no mail address"};
inline constexpr Word kNoNumber = {L"没有手机号码", L"has no mobile number"};
inline constexpr Word kDropped = {L"已包含于", L"is part of"};
inline constexpr Word kSameNumber = {L"号码相同:", L"same number as"};
inline constexpr Word kNotTold = {L"平台认为无需通知", L"the platform says: need not be told"};
inline constexpr Word kNotToldAtAll = {L"平台未答复是否通知", L"the platform does not say whether to tell"};
inline constexpr Word kChannelFails = {L"整个通道失败", L"the whole channel fails"};

inline constexpr Word kOriginField = {L"单据字段", L"bill field"};
inline constexpr Word kOriginGroup = {L"分组信息", L"group"};
inline constexpr Word kOriginHost = {L"宿主程序", L"host"};
inline constexpr Word kOriginEither = {L"单据字段或宿主程序", L"bill field or host"};
inline constexpr Word kLiteral = {L"原样保留", L"stays as it is"};
inline constexpr Word kNoVariable = {L"没有这个变元", L"no such variable"};
inline constexpr Word kNoValue = {L"单据和分组信息中都没有值", L"neither bill nor group has a value"};
inline constexpr Word kGroupOnly = {L"只取分组信息,其中没有值", L"only the group counts, and it has no value"};
inline constexpr Word kInTitle = {L"标题中的变元不会被替换", L"titles are never translated"};
inline constexpr Word kTitleIsCut = {L"标题超过50个字符,被截断", L"longer than 50 characters: it is cut"};
inline constexpr Word kLost = {L"系统代码页无法表示的字符", L"Characters that the system's code page loses"};
inline constexpr Word kNoList = {L"消息中没有接收人名单", L"the message has no list of recipients"};
inline constexpr Word kBadKey = {L"名单中的键不是用户编号:", L"a key of the list is no user ID:"};
inline constexpr Word kTooMany = {L"接收人超过32767个", L"more than 32,767 recipients"};
inline constexpr Word kCannotCreate = {L"不能创建组件", L"cannot create component"};
inline constexpr Word kNothingThere = {L"没有可发送的地址或号码", L"no address or number is left"};
inline constexpr Word kSilent = {L"操作失败,但没有提示", L"the operation failed, and says nothing"};
inline constexpr Word kNameless = {L"平台的答复没有 FUserID,不知道是谁的",
                                   L"the platform's answers lack FUserID: nobody can tell whose they are"};
inline constexpr Word kUsersUnread = {L"读不到用户表 t_User", L"the table t_User cannot be read"};
inline constexpr Word kDiffers = {L"请求与推算的名单不一致", L"the request is another than the list explains"};

inline constexpr Word kNotSeen = {L"预览已拒绝:记录器无法拦截组件",
                                  L"Preview refused: the recorder does not stand before"};
inline constexpr Word kNoMessage = {L"消息对象中没有消息", L"The Message object holds no message"};
inline constexpr Word kNoResult = {L"尚无预览", L"Nothing was previewed yet"};
inline constexpr Word kMissingMember = {L"平台的 TavioMClass.ClassInfo 没有成员",
                                        L"The platform's TavioMClass.ClassInfo has no member"};
inline constexpr Word kUnknownType = {L"未知的业务对象", L"Unknown bill type"};
inline constexpr Word kUnknownAction = {L"未知的操作", L"Unknown action"};
inline constexpr Word kUnknownScenario = {L"未知的业务场景", L"Unknown scenario"};
inline constexpr Word kUnknownBill = {L"未知的单据", L"Unknown bill"};
inline constexpr Word kHasNoMessage = {L"操作在此业务场景中没有消息:", L"The action has no message in this scenario:"};
inline constexpr Word kThereAre = {L"现有:", L"there are:"};
inline constexpr Word kBill = {L"单据", L"bill"};

inline constexpr Word kNothingChecked = {L"尚未检查", L"Nothing was checked yet"};
inline constexpr Word kNoFindings = {L"没有发现问题", L"No findings"};
inline constexpr Word kPerhapsMeant = {L"也许应为", L"perhaps meant:"};
inline constexpr Word kKnownAddsIt = {L"改名,或者告知它由宿主程序加入", L"rename it, or say that a host adds it"};
inline constexpr Word kShortenTitle = {L"缩短到50个字符", L"shorten it to 50 characters"};
inline constexpr Word kTitleStays = {L"标题中的变元不会被替换,请移到内容中",
                                     L"titles are never translated: move it to the text"};
inline constexpr Word kCloseBracket = {L"补上 ]", L"add the ]"};
inline constexpr Word kReplaceCharacter = {L"换一个系统代码页中的字符", L"take a character of the system's code page"};
inline constexpr Word kOnlyByField = {L"只有单据字段中的用户会收到系统消息",
                                      L"only users in bill fields get a system message"};
inline constexpr Word kAddRecipient = {L"加入接收人", L"add a recipient"};
inline constexpr Word kRemoveUser = {L"从名单中移去", L"take the user out of the list"};
inline constexpr Word kChangeMask = {L"与操作的业务场景没有交集,请改变",
                                     L"shares no scenario with its action: change it"};
inline constexpr Word kHiddenBy = {L"在每个业务场景中都被掩码更大的消息代替",
                                   L"a message of a greater mask is sent instead in every scenario"};
inline constexpr Word kChangeCode = {L"改变其中一个操作代码", L"change one of the codes"};
inline constexpr Word kSameRight = {L"权限与此操作重复:", L"shares a right with"};
inline constexpr Word kWasRenamed = {L"字段已改名", L"the field was renamed"};
inline constexpr Word kWriteInstead = {L"改为:", L"write instead:"};
inline constexpr Word kIsLost = {L"已不存在", L"is no longer there"};

inline constexpr Word kNoExport = {L"不是导出文件", L"this is no export"};
inline constexpr Word kTooDeep = {L"嵌套过深", L"nested too deeply"};
inline constexpr Word kNoValueOfPackage = {L"数据包中不能有这个值:", L"a package cannot hold this value:"};
inline constexpr Word kOtherVersion = {L"导出文件的版本不同", L"the export is of another version"};
inline constexpr Word kOtherType = {L"导出文件属于另一业务对象:", L"the export is of another bill type:"};
inline constexpr Word kNotSaved = {L"未能保存", L"it was not saved"};
inline constexpr Word kNothingToChange = {L"没有变化", L"nothing to change"};

inline constexpr Word kTrace = {L"调用跟踪", L"Trace"};
inline constexpr Word kNoEntries = {L"没有日志条目:记录器启动之前已使用过组件库",
                                    L"no entries: the library was used before the recorder was started"};
inline constexpr Word kAnswer = {L"结果", L"Answer"};
inline constexpr Word kKeptBack = {L"未传给平台", L"kept from the platform"};
inline constexpr Word kBroken = {L"被记录器破坏", L"broken by the recorder"};
inline constexpr Word kCalls = {L"次调用", L"calls"};
inline constexpr Word kEntriesOfLog = {L"个操作", L"operations"};

}  // namespace words
}  // namespace tavio::companion
