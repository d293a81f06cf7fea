#pragma once

#include <QByteArray>

namespace cli {

// A root A at (0, 0) with the children B at (200, 50) and C at (200, -50), and a relationship from B to C.
inline QByteArray smallMap() {
  return R"({"version":1,"title":"Small","createdAt":"2024-01-01T00:00:00Z","updatedAt":"2024-01-02T00:00:00Z",)"
         R"("layout":"manual","canvas":{"background":"#FFFFFF","grid":true,"snap":true,"themeId":"ocean"},)"
         R"("nodes":[)"
         R"({"id":"AAAAAAAA-0000-4000-8000-000000000001","title":"A","position":[0,0],"style":)"
         R"({"fill":"#111111","stroke":"#222222","textColor":"#FFFFFF","shape":"circle","iconSize":20}},)"
         R"({"id":"BBBBBBBB-0000-4000-8000-000000000002","title":"B","position":[200,50],"badge":"done","style":)"
         R"({"fill":"#111111","stroke":"#222222","textColor":"#FFFFFF","shape":"ellipse","iconSize":20}},)"
         R"({"id":"CCCCCCCC-0000-4000-8000-000000000003","title":"C","position":[200,-50],"style":)"
         R"({"fill":"#111111","stroke":"#222222","textColor":"#FFFFFF","shape":"rectangle","iconSize":20}}],)"
         R"("edges":[)"
         R"({"id":"EEEEEEEE-0000-4000-8000-000000000001","from":"AAAAAAAA-0000-4000-8000-000000000001",)"
         R"("to":"BBBBBBBB-0000-4000-8000-000000000002","label":"","style":{"color":"#333333","dashed":false,)"
         R"("arrowHead":"triangle","taper":{"startWidth":6,"endWidth":2,"easing":"quadraticIn"}}},)"
         R"({"id":"EEEEEEEE-0000-4000-8000-000000000002","from":"AAAAAAAA-0000-4000-8000-000000000001",)"
         R"("to":"CCCCCCCC-0000-4000-8000-000000000003","label":"","style":{"color":"#333333","dashed":true,)"
         R"("arrowHead":"none","taper":{"startWidth":6,"endWidth":2,"easing":"linear"}}}],)"
         R"("relationships":[{"id":"DDDDDDDD-0000-4000-8000-000000000001",)"
         R"("from":"BBBBBBBB-0000-4000-8000-000000000002","to":"CCCCCCCC-0000-4000-8000-000000000003",)"
         R"("label":"","color":"#888888"}]})";
}

inline constexpr char idA[] = "AAAAAAAA-0000-4000-8000-000000000001";
inline constexpr char idB[] = "BBBBBBBB-0000-4000-8000-000000000002";
inline constexpr char idC[] = "CCCCCCCC-0000-4000-8000-000000000003";
inline constexpr char edgeToB[] = "EEEEEEEE-0000-4000-8000-000000000001";
inline constexpr char edgeToC[] = "EEEEEEEE-0000-4000-8000-000000000002";
inline constexpr char linkBToC[] = "DDDDDDDD-0000-4000-8000-000000000001";

inline QByteArray loadSmallMap() {
  return R"({"do":"load","map":)" + smallMap() + '}';
}

// {"do": operation, "id": id, rest}
inline QByteArray with(const char* operation, const char* key, const char* id, const QByteArray& rest = {}) {
  return QByteArray(R"({"do":")") + operation + R"(",")" + key + R"(":")" + id + '"' + rest + '}';
}

}  // namespace cli
