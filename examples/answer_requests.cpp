// Answers requests in XML that come from anywhere: each is read from a socket up to its end, and
// nothing in it reaches the log, a path or the answer as anything but text.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <sys/socket.h>
#include <unistd.h>
#include <cstdio>
#include <string>

namespace {

const int kMostBytes = 4096;  // of a request; a longer one counts as empty

std::string ReadRequest(int socket) {
  std::string request(kMostBytes + 1, ' ');
  const ssize_t size = recv(socket, &request[0], request.size(), MSG_WAITALL);
  return request.substr(0, size < 0 || size > kMostBytes ? 0 : static_cast<std::size_t>(size));
}

std::string Answer(IXMLDOMDocument2* devices, const std::string& request) {
  const xmldom::LoadResult answer = xmldom::LoadText("<answer/>");
  const XMLPtr<IXMLDOMNode> root = xmldom::SelectOne(answer.document, "/answer");
  const xmldom::LoadResult asked = xmldom::LoadText(request);
  if (!asked) {
    std::printf("log: %s\n", xmldom::OneLine(asked.error).c_str());
    return xmldom::SetText(root, "not understood") ? xmldom::Xml(root) : "";
  }
  // What is asked for is compared; as a part of a path it could change what the path means.
  const std::string wanted = xmldom::Attribute(xmldom::SelectOne(asked.document, "/get"), "name");
  std::string state = "unknown";
  for (XMLPtr<IXMLDOMNode> device : xmldom::Select(devices, "/devices/device")) {
    if (xmldom::Attribute(device, "name") == wanted) state = xmldom::Text(device);
  }
  const bool stored = xmldom::SetAttribute(root, "name", wanted) && xmldom::SetText(root, state);
  return stored ? xmldom::Xml(root) : "";
}

}  // namespace

int main() {
  SetDebugEntities(false);  // nothing that is read goes to standard output by itself
  const xmldom::LoadResult devices = xmldom::LoadText(
      "<devices><device name='fan &lt;1&gt;'>up\xc2\xb0</device><device name='pump'/></devices>");
  for (const std::string& request :
       {std::string("<get name='fan &lt;1&gt;'/>"), std::string("<get name=\"']|//*['\"/>"),
        std::string("<get\x1b[2J\n name='fan'>"), std::string("<get/>\0<put/>", 13)}) {
    int sockets[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) != 0 ||
        write(sockets[0], request.data(), request.size()) < 0) {
      return 1;
    }
    shutdown(sockets[0], SHUT_WR);
    std::printf("%s", Answer(devices.document.Get(), ReadRequest(sockets[1])).c_str());
    for (int socket : sockets) close(socket);
  }
}
