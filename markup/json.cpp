#include "markup/json.h"

#include <utility>

namespace {

// Takes the first key off a path.
std::string_view NextKey(std::string_view& path) {
  const size_t end = path.find_first_of("/\\");
  const std::string_view key = path.substr(0, end);
  path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
  return key;
}

bool HasSeparator(std::string_view path) {
  return path.find_first_of("/\\") != std::string_view::npos;
}

CJsonValue& AddMember(CJsonObject& object, std::string_view key) {
  CJsonValue& added = *object.Append(std::make_unique<CJsonValue>());
  added.key = key;
  return added;
}

// A position has two members, and is the most frequent object.
constexpr size_t kUsualValues = 2;

}  // namespace

JsonValues::~JsonValues() { Clear(); }

CJsonValue* JsonValues::Append(OwnedValue value) {
  if (m_values.capacity() == 0) m_values.reserve(kUsualValues);
  return m_values.emplace_back(std::move(value)).get();
}

void JsonValues::Clear() {
  for (; !m_values.empty(); m_values.pop_back()) Destroy(std::move(m_values.back()));
}

// The list of `value` that still holds something, or null.
JsonValues::List* JsonValues::Children(CJsonValue& value) {
  if (value.array.Count() != 0) return &value.array.m_values;
  if (value.object.Count() != 0) return &value.object.m_values;
  return nullptr;
}

// Takes a tree apart from its leaves, without recursion and without memory of its own: as long as
// the walk is below a value, the slot of the child that it took keeps the way back up.
void JsonValues::Destroy(OwnedValue value) {
  OwnedValue parent;
  while (value) {
    if (List* const children = Children(*value)) {
      OwnedValue& child = children->back();
      if (!child || !Children(*child)) {
        children->pop_back();
        continue;
      }
      std::swap(child, parent);
      std::swap(value, parent);
      continue;
    }
    value = std::move(parent);
    if (!value) break;
    List& siblings = *Children(*value);
    parent = std::move(siblings.back());
    siblings.pop_back();
  }
}

CJsonValue& CJsonArray::Add() { return *Append(std::make_unique<CJsonValue>()); }

const CJsonValue& CJsonArray::At(size_t index) const {
  if (index >= Count() || !begin()[index])
    throw CJsonException(kJsonMissing, std::to_string(index));
  return *begin()[index];
}

CJsonValue& CJsonArray::At(size_t index) {
  return const_cast<CJsonValue&>(std::as_const(*this).At(index));
}

const CJsonValue* CJsonObject::Find(std::string_view name) const {
  for (const OwnedValue& member : *this) {
    if (member && member->key == name) return member.get();
  }
  return nullptr;
}

CJsonValue* CJsonObject::Find(std::string_view name) {
  return const_cast<CJsonValue*>(std::as_const(*this).Find(name));
}

const CJsonValue& CJsonObject::Get(std::string_view name) const {
  const CJsonValue* const found = Find(name);
  if (!found) throw CJsonException(kJsonMissing, name);
  return *found;
}

CJsonValue& CJsonObject::Get(std::string_view name) {
  return const_cast<CJsonValue&>(std::as_const(*this).Get(name));
}

const CJsonValue* CJsonObject::FindPath(std::string_view path) const {
  const CJsonObject* object = this;
  while (HasSeparator(path)) {
    const CJsonValue* const step = object->Find(NextKey(path));
    if (!step || step->type != kJsonObject) return nullptr;
    object = &step->object;
  }
  return object->Find(path);
}

CJsonValue* CJsonObject::FindPath(std::string_view path) {
  return const_cast<CJsonValue*>(std::as_const(*this).FindPath(path));
}

CJsonValue& CJsonObject::Ensure(std::string_view path) {
  CJsonObject* object = this;
  while (HasSeparator(path)) {
    const std::string_view key = NextKey(path);
    CJsonValue* step = object->Find(key);
    if (!step) {
      step = &AddMember(*object, key);
      step->type = kJsonObject;
    }
    object = &step->AsObject();
  }
  if (object->Find(path)) throw CJsonException(kJsonKeyExists, path);
  return AddMember(*object, path);
}

CJsonValue::~CJsonValue() = default;

void CJsonValue::Clear() {
  type = kJsonUndefined;
  text.clear();
  number = 0.0;
  flag = false;
  array.Clear();
  object.Clear();
}

const CJsonObject& CJsonValue::AsObject() const {
  if (type != kJsonObject) throw CJsonException(kJsonNotObject, key);
  return object;
}

CJsonObject& CJsonValue::AsObject() {
  return const_cast<CJsonObject&>(std::as_const(*this).AsObject());
}

const CJsonArray& CJsonValue::AsArray() const {
  if (type != kJsonArray) throw CJsonException(kJsonNotArray, key);
  return array;
}

CJsonArray& CJsonValue::AsArray() {
  return const_cast<CJsonArray&>(std::as_const(*this).AsArray());
}

const std::string& CJsonValue::AsString() const {
  if (type != kJsonString) throw CJsonException(kJsonNotString, key);
  return text;
}

double CJsonValue::AsNumber() const {
  if (type != kJsonNumber) throw CJsonException(kJsonNotNumber, key);
  return number;
}

bool CJsonValue::AsBool() const {
  if (type != kJsonBool) throw CJsonException(kJsonNotBool, key);
  return flag;
}

const CJsonValue& CJsonValue::Get(std::string_view name) const { return AsObject().Get(name); }

CJsonValue& CJsonValue::Get(std::string_view name) { return AsObject().Get(name); }

void CJsonValue::SetString(std::string_view newText) {
  type = kJsonString;
  text = newText;
}

int CJsonDocument::Parse(std::string_view source) {
  Clear();
  try {
    ParseValue(source);
  } catch (const CJsonException& failure) {
    return failure.code;
  }
  return 0;
}
