// The portal. Its address chooses what it shows:
//   index.html                               every document
//   index.html?tomedeck=NAME[&tab=TAB]       the portal NAME
//   index.html?tab=TAB                       a tab: Documents, TomeDecks or Search, by its first letters
//   index.html#[tomedeck=NAME&]query=WORDS&tab=search
// The lists are scripts that "olh dmerge" writes, and each portal's own js/doclist.js. They are made of calls of the
// objects below. A portal is only opened when the generated list names it.
var mbUseInstalledTdks = false, mReleaseName = '', mTomeDeckName = '';
var mLibraryList = [];

function List_Object(kind) { this.kind = kind; this.items = []; }
List_Object.prototype.fAddItem = function (title, name) { this.items.push([title, name]); };
function TabEntry_Object(title) { this.title = title; this.lists = []; }
TabEntry_Object.prototype.fAddList = function (list) { this.lists.push(list); };
function Tab_Object() { this.visible = false; this.entries = []; }
Tab_Object.prototype.fVisible = function (visible) { this.visible = visible; };
Tab_Object.prototype.fAddEntry = function (entry) { this.entries.push(entry); };
var TDTab_TomeDecks = new Tab_Object(), TDTab_Documents = new Tab_Object();

(function () {
  'use strict';
  var root = document.currentScript.dataset.root;

  function items(tab) {
    return tab.entries.flatMap(function (entry) { return entry.lists.flatMap(function (list) { return list.items; }); });
  }

  function portalName(item) {
    return item[1].slice(item[1].lastIndexOf('tomedeck=') < 0 ? 0 : item[1].lastIndexOf('tomedeck=') + 9);
  }

  function address(portal, values) {
    return '#tomedeck=' + encodeURIComponent(portal) + Object.keys(values).map(function (key) {
      return '&' + key + '=' + encodeURIComponent(values[key]);
    }).join('');
  }

  // A document's row: its title and a link to each form in which it is here.
  function documentRow(row) {
    var name = encodeURIComponent(row[1]), html = root + 'htmldocs/' + name + '/index.htm', pdf = root + 'pdfdocs/' + name + '.pdf';
    var item = olh.element('li', {}, olh.element('a', { href: row[2] === 'pdf' ? pdf : html }, row[0]));
    item.append(olh.element('span', { 'class': 'forms' }, [row[2] === 'pdf' ? '' : olh.element('a', { href: html }, 'HTML'), ' ',
      row[2] === 'html' ? '' : olh.element('a', { href: pdf }, 'PDF')]));
    return item;
  }

  // The documents of a portal: what its own list names and the generated list knows; the portal's titles are kept.
  function documents(portal) {
    if (!portal) return mLibraryList;
    return items(TDTab_Documents).flatMap(function (item) {
      var row = mLibraryList.find(function (known) { return known[1] === item[1]; });
      return row ? [[item[0]].concat(row.slice(1))] : [];
    });
  }

  function list(rows, empty) {
    return rows.length ? olh.element('ul', { 'class': 'list' }, rows) : olh.element('p', { 'class': 'note' }, empty);
  }

  function portalList(portals) {
    return list(portals.map(function (item) {
      return olh.element('li', {}, olh.element('a', { href: root + 'tomedecks/index.html?tomedeck=' + encodeURIComponent(portalName(item)) }, item[0]));
    }), 'No portal is listed. "olh dmerge" with this documentation root lists the portals that it finds.');
  }

  // What a tab shows. The first one of all the documentation leads to the portals too.
  function body(tab, portal, portals, query) {
    if (tab === 'search') {
      var scopes = [['All documents', '']].concat(portals.map(function (item) { return [item[0], portalName(item)]; }));
      return olhSearch.panel(root, documents(portal), query, scopes, portal, function (words, scope) {
        location.hash = address(scope, { query: words, tab: 'search' });
      });
    }
    if (tab === 'tomedecks') return portalList(portals);
    var rows = list(documents(portal).map(documentRow), 'No document is listed. "olh dmerge" with this documentation root lists what it finds.');
    return portal || !portals.length ? rows : olh.element('div', {}, [olh.element('h2', {}, 'Documents'), rows, olh.element('h2', {}, 'Portals'), portalList(portals)]);
  }

  function tabOf(asked) {
    var wanted = (asked.tab || (asked.query ? 'search' : '')).toLowerCase();
    return ['documents', 'tomedecks', 'search'].find(function (tab) { return wanted && tab.indexOf(wanted) === 0; }) || 'documents';
  }

  function show(asked, portal, portals) {
    var tab = tabOf(asked), say = olh.element('p', { 'class': 'note', role: 'status' });
    if (asked.tomedeck && asked.tomedeck !== portal) say.textContent = 'There is no portal "' + olh.shown(asked.tomedeck) + '" here. This is all the documentation.';
    var title = tab === 'search' ? (portal ? 'Search in ' + mTomeDeckName : 'Search in all documents') : portal ? mTomeDeckName : 'Documentation';
    document.querySelector('.tabs').replaceChildren.apply(document.querySelector('.tabs'),
      [['documents', 'Documents'], ['tomedecks', 'Portals'], ['search', 'Search']].map(function (pair) {
        return olh.element('a', Object.assign({ href: address(portal, { tab: pair[0] }) }, pair[0] === tab ? { 'aria-current': 'page' } : {}), pair[1]);
      }));
    var old = document.querySelector('.bar form');
    if (old) old.remove();
    if (tab !== 'search') {
      olh.toBar(olh.searchField('Search ' + title, function (words) { return address(portal, { tab: 'search' }) + '&query=' + words; },
        { base: root, names: portal ? documents(portal).map(function (row) { return row[1]; }) : null }));
    }
    document.querySelector('main').replaceChildren(olh.element('h1', {}, title), say, body(tab, portal, portals, asked.query || ''),
      olh.element('p', { 'class': 'release' }, mReleaseName));
    document.title = title;
    if (tab === 'search' && !asked.query) document.getElementById('query').focus();
  }

  function start() {
    var asked = olh.asked(), portals = mbUseInstalledTdks ? items(TDTab_TomeDecks) : [];
    if (asked.tomedeck === 'qel_td') asked.tomedeck = '';
    var known = portals.some(function (item) { return portalName(item) === asked.tomedeck; });
    if (!known) return show(asked, '', portals);
    TDTab_Documents = new Tab_Object();
    olh.script(root + 'tomedecks/' + encodeURIComponent(asked.tomedeck) + '/js/doclist.js').then(function () {
      show(asked, asked.tomedeck, portals);
    });
  }

  addEventListener('DOMContentLoaded', start);
  addEventListener('hashchange', start);
})();
