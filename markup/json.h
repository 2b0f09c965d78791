#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// JSON as services, the planner page and navigators write it. The reader is a forgiving scanner: it
// looks for the next delimiter and takes what stands before it, so that text which is no proper
// JSON often gives something useful all the same. It takes time and memory in proportion to the
// text, and no stack.

class CJsonValue;

/// What a value is.
enum JsonType : uint32_t {
  kJsonUndefined = 0,  ///< fresh, or nothing could be read
  kJsonNull = 1,
  kJsonString = 2,
  kJsonNumber = 3,
  kJsonObject = 4,
  kJsonArray = 5,
  kJsonBool = 6,
};

/// Why a text could not be read, or a value not be had.
enum JsonError : int {
  kJsonKeyExists = 1,  ///< a key to be made is there already
  kJsonObjectCut = 2,  ///< no further delimiter before an object's end
  kJsonValueCut = 3,   ///< no delimiter at all behind the start of a value
  kJsonArrayCut = 4,   ///< neither "," nor "]" behind an element
  kJsonMissing = 5,    ///< no such key or index
  kJsonNotString = 6,  ///< not a string; also a backslash at the very end of one
  kJsonNotNumber = 7,  ///< not a number
  kJsonNotBool = 8,    ///< not a boolean
  kJsonNotObject = 9,  ///< not an object
  kJsonNotArray = 10,  ///< not an array
  kJsonTooBig = 11,    ///< nested too deeply, or with keys that outgrow the text
};

/// Levels that a document may be nested. Nothing here recurses; the limit keeps a text of nothing
/// but brackets from taking a hundred times its size.
inline constexpr size_t kJsonDeepest = 100000;

/// A failure. It carries no message.
class CJsonException : public std::exception {
 public:
  CJsonException(int errorCode, std::string_view errorKey) : code(errorCode), key(errorKey) {}

  int code;         ///< an JsonError
  std::string key;  ///< the key that was asked for, or that of the value where it happened
};

/// Values in their order, owned. Trees of any depth are destroyed without recursion.
class JsonValues {
 public:
  using OwnedValue = std::unique_ptr<CJsonValue>;

  JsonValues() = default;
  ~JsonValues();
  JsonValues(const JsonValues&) = delete;
  JsonValues& operator=(const JsonValues&) = delete;

  size_t Count() const { return m_values.size(); }
  OwnedValue* begin() { return m_values.data(); }
  OwnedValue* end() { return begin() + Count(); }
  const OwnedValue* begin() const { return m_values.data(); }
  const OwnedValue* end() const { return begin() + Count(); }

  /// Appends `value`, which may be null: writing an object ends there.
  CJsonValue* Append(OwnedValue value);
  void Clear();

 private:
  // Most lists are short, as that of a position's two members: these lie in the blocks of values.
  struct Allocator {
    using value_type = OwnedValue;
    template <class>
    struct rebind {
      using other = Allocator;
    };
    static OwnedValue* allocate(size_t count);
    static void deallocate(OwnedValue* values, size_t count);
    bool operator==(const Allocator&) const = default;
  };
  using List = std::vector<OwnedValue, Allocator>;

  static List* Children(CJsonValue& value);
  static void Destroy(OwnedValue value);

  List m_values;
};

/// The elements of an array.
class CJsonArray : public JsonValues {
 public:
  /// Appends an undefined value and returns it.
  CJsonValue& Add();
  /// Throws kJsonMissing for an index that is too large.
  CJsonValue& At(size_t index);
  const CJsonValue& At(size_t index) const;
};

/// The members of an object. A key may stand there more than once; the first is found.
class CJsonObject : public JsonValues {
 public:
  /// The member, or null.
  CJsonValue* Find(std::string_view name);
  const CJsonValue* Find(std::string_view name) const;
  /// The member; throws kJsonMissing without one.
  CJsonValue& Get(std::string_view name);
  const CJsonValue& Get(std::string_view name) const;
  /// The member at the end of a path, whose keys are separated by "/" or "\". Null when one is
  /// missing or a value on the way is not an object.
  CJsonValue* FindPath(std::string_view path);
  const CJsonValue* FindPath(std::string_view path) const;
  /// Makes the member at the end of a path and the objects that are missing on the way, and returns
  /// it, undefined. Throws kJsonKeyExists when it is there already, kJsonNotObject when a value on
  /// the way is not an object.
  CJsonValue& Ensure(std::string_view path);
};

/// A node of a document. All slots are there whatever the type.
class CJsonValue {
 public:
  CJsonValue() = default;
  virtual ~CJsonValue();
  /// Values, but not those of derived classes with more members, come from blocks of many.
  static void* operator new(size_t size);
  static void operator delete(void* value, size_t size);
  CJsonValue(const CJsonValue&) = delete;
  CJsonValue& operator=(const CJsonValue&) = delete;

  /// Reads one value from the start of `source` into this fresh value. Returns the number of bytes
  /// that it takes; the delimiter behind a bare word or number is not among them. What follows is
  /// not looked at. Throws CJsonException and keeps what was complete by then.
  size_t ParseValue(std::string_view source);
  /// Back to undefined; the key stays.
  void Clear();

  /// Access by type; each throws the code of its type when the value is of another.
  CJsonObject& AsObject();
  const CJsonObject& AsObject() const;
  CJsonArray& AsArray();
  const CJsonArray& AsArray() const;
  const std::string& AsString() const;
  double AsNumber() const;
  bool AsBool() const;
  /// The member of an object; throws kJsonNotObject or kJsonMissing.
  CJsonValue& Get(std::string_view name);
  const CJsonValue& Get(std::string_view name) const;

  /// Makes this a string.
  void SetString(std::string_view newText);

  std::string key;  ///< name in the object that holds the value; empty elsewhere
  JsonType type = kJsonUndefined;
  std::string text;     ///< of a string: bytes as they stood in the document, mostly UTF-8
  double number = 0.0;  ///< of a number
  bool flag = false;    ///< of a boolean
  CJsonArray array;
  CJsonObject object;
};

/// A whole document.
class CJsonDocument : public CJsonValue {
 public:
  /// Replaces this by the document in `source`. Returns 0 or the code of the failure; what was
  /// complete before it stays.
  int Parse(std::string_view source);
};

/// Appends `value` as text, with its key in front if it has one. Blanks stand behind colons only.
void AppendJson(std::string& output, const CJsonValue& value);
std::ostream& operator<<(std::ostream& stream, const CJsonValue& value);
