#include "bench/plain/Plain.h"

#include <plist/plist.h>

namespace plain {

namespace {

plist_t array(std::initializer_list<plist_t> elements) {
  plist_t node = plist_new_array();
  for (plist_t element : elements) plist_array_append_item(node, element);
  return node;
}

plist_t text(const std::string& string) { return plist_new_string(string.c_str()); }

/// The entries of the archive: null, the record with its key and its value, and the record's class.
plist_t objects(const std::string& key, const lumo::Data& picture) {
  plist_t record = plist_new_dict();
  plist_dict_set_item(record, "NS.keys", array({plist_new_uid(2)}));
  plist_dict_set_item(record, "NS.objects", array({plist_new_uid(3)}));
  plist_dict_set_item(record, "$class", plist_new_uid(4));
  plist_t bytes = plist_new_data(reinterpret_cast<const char*>(picture.data()), picture.size());
  plist_t classRecord = plist_new_dict();
  plist_dict_set_item(classRecord, "$classname", text("NSMutableDictionary"));
  plist_dict_set_item(classRecord, "$classes",
                      array({text("NSMutableDictionary"), text("NSDictionary"), text("NSObject")}));
  return array({text("$null"), record, text(key), bytes, classRecord});
}

}  // namespace

std::string archived(const std::string& key, const lumo::Data& picture) {
  plist_t envelope = plist_new_dict();
  plist_dict_set_item(envelope, "$version", plist_new_uint(100000));
  plist_dict_set_item(envelope, "$objects", objects(key, picture));
  plist_dict_set_item(envelope, "$archiver", text("NSKeyedArchiver"));
  plist_t top = plist_new_dict();
  plist_dict_set_item(top, "root", plist_new_uid(1));
  plist_dict_set_item(envelope, "$top", top);
  char* bytes = nullptr;
  std::uint32_t size = 0;
  plist_to_bin(envelope, &bytes, &size);
  std::string archive(bytes, size);
  plist_to_bin_free(bytes);
  plist_free(envelope);
  return archive;
}

}  // namespace plain
