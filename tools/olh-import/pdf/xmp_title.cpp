#include "xmp_title.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlsave.h>

#include <memory>

#include "markup.h"

namespace olh_import {

namespace {

using Document = std::unique_ptr<xmlDoc, void (*)(xmlDoc*)>;

constexpr const char* kPdf = "http://ns.adobe.com/pdf/1.3/";
constexpr const char* kEmpty =
    "<?xpacket begin=\"\ufeff\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
    "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
    "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
    "</rdf:RDF>\n"
    "</x:xmpmeta>\n"
    "<?xpacket end=\"w\"?>";

const xmlChar* as_xml(const std::string& text) { return reinterpret_cast<const xmlChar*>(text.c_str()); }

Document parsed(const std::string& xmp) {
  const int flags = XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  return {xmlReadMemory(xmp.data(), static_cast<int>(xmp.size()), nullptr, nullptr, flags), xmlFreeDoc};
}

bool is_element(const xmlNode* node, const char* name) {
  return node->type == XML_ELEMENT_NODE && xmlStrEqual(node->name, reinterpret_cast<const xmlChar*>(name)) != 0;
}

// The element rdf:RDF, which is the root or right below it.
xmlNode* rdf_of(xmlDoc* document) {
  xmlNode* const root = document == nullptr ? nullptr : xmlDocGetRootElement(document);
  if (root == nullptr || is_element(root, "RDF")) return root;
  for (xmlNode* node = root->children; node != nullptr; node = node->next)
    if (is_element(node, "RDF")) return node;
  return nullptr;
}

// Titles of that kind that a description has, as an element or as an attribute.
void remove_titles(xmlNode* description) {
  const xmlChar* const title = reinterpret_cast<const xmlChar*>("Title");
  if (xmlAttr* const found = xmlHasNsProp(description, title, reinterpret_cast<const xmlChar*>(kPdf)))
    xmlRemoveProp(found);
  for (xmlNode *node = description->children, *next = nullptr; node != nullptr; node = next) {
    next = node->next;
    if (!is_element(node, "Title") || node->ns == nullptr || !xmlStrEqual(node->ns->href, as_xml(kPdf))) continue;
    xmlUnlinkNode(node);
    xmlFreeNode(node);
  }
}

void add_title(xmlNode* rdf, const std::string& title) {
  xmlAddChild(rdf, xmlNewText(as_xml("\n")));
  xmlNode* const description = xmlNewChild(rdf, rdf->ns, as_xml("Description"), nullptr);
  xmlNewNsProp(description, rdf->ns, as_xml("about"), as_xml(""));
  xmlAddChild(description, xmlNewText(as_xml("\n")));
  xmlNewTextChild(description, xmlNewNs(description, as_xml(kPdf), as_xml("pdf")), as_xml("Title"), as_xml(title));
  xmlAddChild(description, xmlNewText(as_xml("\n")));
  xmlAddChild(rdf, xmlNewText(as_xml("\n")));
}

std::string written(xmlDoc* document) {
  const std::unique_ptr<xmlBuffer, void (*)(xmlBuffer*)> buffer(xmlBufferCreate(), xmlBufferFree);
  xmlSaveCtxt* const save = xmlSaveToBuffer(buffer.get(), "UTF-8", XML_SAVE_NO_DECL);
  xmlSaveDoc(save, document);
  xmlSaveClose(save);
  return {reinterpret_cast<const char*>(xmlBufferContent(buffer.get())),
          static_cast<std::size_t>(xmlBufferLength(buffer.get()))};
}

}  // namespace

std::string title_in_xmp(const std::string& xmp) {
  const Markup markup = Markup::xml(xmp);
  for (const char* name : {"Title", "title"})
    if (const Element title = markup.first(name)) return title.text();
  return "";
}

std::string xmp_with_title(const std::string& xmp, const std::string& title) {
  Document document = parsed(xmp);
  if (rdf_of(document.get()) == nullptr) document = parsed(kEmpty);
  xmlNode* const rdf = rdf_of(document.get());
  if (rdf == nullptr) throw std::bad_alloc();
  for (xmlNode* node = rdf->children; node != nullptr; node = node->next)
    if (is_element(node, "Description")) remove_titles(node);
  add_title(rdf, title);
  return written(document.get());
}

}  // namespace olh_import
