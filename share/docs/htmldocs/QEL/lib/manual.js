// The frame of an HTML manual. Its start page follows #context=NAME&topic=TOPIC&single=true|popup to the topic's own
// page; every topic page gets the contents beside it, unless it is shown alone (single=true) or as a popup. What context
// says does not matter: the manual is the one that this page belongs to.
//
// frame_pages.py writes the same frame into the pages of a manual, behind the topic, for readers without JavaScript; what
// it has written is used as it is.
var olhManual = { title: '', version: '', licence: '', topics: [] };

// The topic table, QELdata/QELAllData.js, is made of calls of these two.
function QELAddBookVar(name, value) {
  var known = { DocTitle: 'title', Version: 'version', Licence: 'licence' }[name];
  if (known) olhManual[known] = value;
}
function QELAddTopic(row) { olhManual.topics.push({ id: row[0], page: row[1], title: row[2], group: row[3] || '' }); }

(function () {
  'use strict';
  var path = olh.decoded(location.pathname).split('/');
  var here = path.pop() || 'index.htm', manual = path.pop(), single = document.documentElement.dataset;
  var itself = './' + location.pathname.replace(/.*\//, '');  // a path that begins with "//" would name another host

  // An address of a manual, to be shown alone where this page is. That goes into the query, which links to places, a
  // reload and a copy of the address keep.
  function alone(address) {
    if (!single.single || /[?&]single=/.test(address)) return address;
    var parts = /^([^?#]*)(\?[^#]*)?(.*)$/.exec(address);
    return parts[1] + (parts[2] ? parts[2] + '&' : '?') + 'single=' + single.single + parts[3];
  }

  function readSingle() {
    var asked = olh.asked().single;
    if (asked === 'true' || asked === 'popup') single.single = asked;
  }

  function topicOf(name) {
    var wanted = olh.topicName(name);
    return olhManual.topics.find(function (topic) { return olh.topicName(topic.id) === wanted; });
  }

  // The topic that is read: of several in one page the one whose place the address names, or the first.
  function topicHere() {
    var found = olhManual.topics.filter(function (topic) { return olh.decoded(topic.page.replace(/[?#].*/, '')) === here; });
    return found.find(function (topic) { return olh.decoded(location.hash) === olh.decoded(topic.page.replace(/^[^#]*/, '')); }) || found[0];
  }

  // Goes to the topic that the address names. The address of the request is replaced, so that "back" leaves the manual.
  function follow() {
    readSingle();
    var asked = olh.asked(), topic = asked.topic && topicOf(asked.topic), say = document.getElementById('missing');
    if (topic) return location.replace(alone(topic.page));
    if (asked.topic && !say) return location.replace(alone('index.htm#topic=' + encodeURIComponent(asked.topic)));
    if (say) say.textContent = asked.topic ? 'There is no topic "' + olh.shown(asked.topic) + '" in this manual. These are its topics:' : '';
    if (/[#&]single=/.test(location.hash))
      history.replaceState(null, '', alone(itself + location.search + location.hash.replace(/[#&]single=[^&]*/g, '')));
  }

  // Marks the topic that is read in the contents, and brings it into view.
  function markTopic(toc) {
    var topic = topicHere();
    toc.querySelectorAll('a').forEach(function (link) {
      link.removeAttribute('aria-current');
      if (!topic || link.getAttribute('href') !== topic.page) return;
      link.setAttribute('aria-current', 'page');
      var from = link.getBoundingClientRect().top - toc.getBoundingClientRect().top;
      if (from < 0 || from > toc.clientHeight - 2 * link.offsetHeight) toc.scrollTop += from - toc.clientHeight / 2;
    });
  }

  function keepContentsWhereTheyWere(toc) {
    var kept = 'olh.contents ' + location.pathname.replace(/[^\/]*$/, '');
    try { toc.scrollTop = sessionStorage.getItem(kept); } catch (e) { return; }
    addEventListener('pagehide', function () { sessionStorage.setItem(kept, toc.scrollTop); });
  }

  function contents() {
    var box = olh.element('details', { open: '' }, olh.element('summary', {}, 'Contents')), group = null, list;
    olhManual.topics.forEach(function (topic) {
      if (topic.group !== group) {
        group = topic.group;
        list = olh.element('ul');
        box.append(group ? olh.element('h2', {}, group) : '', list);
      }
      list.append(olh.element('li', {}, olh.element('a', { href: topic.page }, topic.title)));
    });
    return olh.element('nav', { 'class': 'toc', 'aria-label': 'Contents' }, box);
  }

  function trail(topic) {
    var ways = [['../../index.html', 'All documentation']].concat(topic ? [['index.htm', olhManual.title]] : []);
    var items = ways.map(function (way) { return olh.element('li', {}, olh.element('a', { href: way[0] }, way[1])); });
    if (topic && topic.group) items.push(olh.element('li', {}, topic.group));
    return olh.element('nav', { 'class': 'trail', 'aria-label': 'Breadcrumbs' }, olh.element('ol', {}, items));
  }

  function foot(topic) {
    var at = olhManual.topics.indexOf(topic), before = olhManual.topics[at - 1], after = olhManual.topics[at + 1];
    var row = olh.element('nav', { 'class': 'turn', 'aria-label': 'Previous and next topic' });
    if (before) row.append(olh.element('a', { href: before.page, rel: 'prev' }, '\u2190 ' + before.title));
    if (after) row.append(olh.element('a', { href: after.page, rel: 'next', 'class': 'next' }, after.title + ' \u2192'));
    var words = [(olhManual.title + ' ' + olhManual.version).trim(), olhManual.licence].filter(Boolean).join('. ');
    return olh.element('footer', { 'class': 'foot' }, [row, olh.element('p', {}, words)]);
  }

  // The arrow keys turn pages, where nothing else takes them.
  function turnByKey(event) {
    var key = { ArrowLeft: 'prev', ArrowRight: 'next' }[event.key], link = key && document.querySelector('.turn [rel=' + key + ']');
    var plain = !event.altKey && !event.ctrlKey && !event.metaKey && !event.shiftKey && !event.defaultPrevented;
    if (link && plain && !event.target.closest('input, select, textarea, [tabindex], [contenteditable]') &&
        document.scrollingElement.scrollWidth <= innerWidth) link.click();
  }

  // The foot, as far as the page does not bring it along, and its keys.
  function turnPages(topic) {
    if (!document.querySelector('.foot')) document.querySelector('main').after(foot(topic));
    addEventListener('keydown', turnByKey);
    document.querySelectorAll('.turn a').forEach(function (link) {
      link.title = (link.rel === 'prev' ? 'Left' : 'Right') + ' arrow key';
      link.setAttribute('aria-keyshortcuts', link.rel === 'prev' ? 'ArrowLeft' : 'ArrowRight');
    });
  }

  // What is too wide for the screen can be scrolled with the keyboard.
  function reachable() {
    document.querySelectorAll('pre, .wide').forEach(function (box) {
      if (box.scrollWidth > box.clientWidth) box.tabIndex = 0;
      else box.removeAttribute('tabindex');
    });
  }

  // A topic shown alone leads to topics shown alone, in this manual and in others.
  function keepAlone() {
    document.querySelectorAll('main a').forEach(function (link) {
      if (/^(\.\.\/[^.\/][^\/]*\/)?[^\/:#?]+\.html?(?![^?#])/.test(link.getAttribute('href'))) link.setAttribute('href', alone(link.getAttribute('href')));
    });
  }

  // From a topic alone to the same place with everything around it.
  function wayOut() {
    var link = olh.element('a', {}, 'Open in the manual'), lead = function () { link.href = itself + location.hash; };
    lead();
    addEventListener('hashchange', lead);
    document.querySelector('main').append(olh.element('p', { 'class': 'whole' }, link));
  }

  // A link to this topic's place in the PDF of the same manual, when the generated list says that there is one.
  function pdfLink(topic) {
    olh.script('../QEL/lib/LibList.js').then(function () {
      if (typeof mPDFList === 'undefined' || mPDFList.indexOf(manual) < 0) return;
      var place = 'M8.newlink.' + topic.id.replace(/[^A-Za-z0-9 ]/g, '').replace(/ /g, '.'), pdf = encodeURIComponent(manual) + '.pdf';
      document.querySelector('.trail').append(olh.element('a', { href: '../../pdfdocs/' + pdf + '#nameddest=' + place }, 'This topic in the PDF'));
    });
  }

  // The contents beside a topic, as far as the page does not bring them along.
  function surround() {
    var wide = matchMedia('(min-width: 60rem)');
    document.body.classList.add('framed');
    document.querySelector('.trail').before(document.querySelector('.toc') || contents());
    var toc = document.querySelector('.toc'), fit = function () { toc.firstElementChild.open = wide.matches; };
    fit();
    wide.addEventListener('change', fit);
    keepContentsWhereTheyWere(toc);
    markTopic(toc);
    addEventListener('hashchange', function () { markTopic(toc); });
  }

  function frame() {
    follow();
    addEventListener('load', reachable);
    addEventListener('resize', reachable);
    if (single.single) {
      keepAlone();
      return wayOut();
    }
    var topic = topicHere();
    document.body.prepend(olh.element('a', { 'class': 'skip', href: '#topic' }, 'Skip to the topic'));
    if (olhManual.version) olh.toBar(olh.element('span', { 'class': 'version' }, olhManual.version));
    olh.toBar(olh.searchField('Search this manual', function (words) {
      return '../qelhelp.htm#context=' + encodeURIComponent(manual) + '&query=' + words + '&tab=2&src=doc';
    }, { base: '../../', names: [manual] }));
    document.querySelector('main').before(document.querySelector('.trail') || trail(topic));
    if (topic || here === 'index.htm') turnPages(topic);
    if (!topic) return;
    surround();
    pdfLink(topic);
  }

  readSingle();
  addEventListener('DOMContentLoaded', frame);
  addEventListener('hashchange', follow);
})();
