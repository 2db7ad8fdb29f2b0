// A search of the index of this documentation root (htmldocs/QEL/search, which "olh dmerge" makes): which pages answer a
// query, and in which order. The terminal's "olh search" does the same and comes to the same order. Needs page.js.
//
// Pieces of the index are scripts, so that they load from the disk as from a web server: the head, the words of a query,
// and the texts of what is shown. Nothing else is loaded.
var olhFind = (function () {
  'use strict';
  var NEAR = 3, MOST_WORDS = 16, MOST_PARTS = 32, PIECES_FOR_PHRASES = 10, SHARE_OF_LINKS = 40, FEW_WORDS = 2, MOST_PIECES = 100;
  var PAIRED = /[\u0e00-\u0eff\u1000-\u109f\u1780-\u17ff\u3005-\u3007\u3040-\u30ff\u31f0-\u31ff\u3400-\u4dbf\u4e00-\u9fff\uac00-\ud7af\uf900-\ufaff\uff66-\uff9f\u{20000}-\u{3ffff}]/u;
  var WORD = /[\p{L}\p{M}\p{N}_]/u;

  // ---- words ----

  // Small letters without accents, and without what is not shown. As in the index the dotless i stays, and a Greek iota
  // below a letter comes behind it.
  function folded(text) {
    return text.normalize('NFKD').replace(/\u0345/g, '\u03b9').replace(/[\p{M}\p{Default_Ignorable_Code_Point}]+/gu, '')
      .replace(/[^\u0131]+/g, function (part) { return part.toLowerCase().toUpperCase().toLowerCase(); }).replace(/\u03c2/g, '\u03c3');
  }

  function bytes(text) { return new TextEncoder().encode(text).length; }

  function kind(character) {
    return character === undefined ? '' : PAIRED.test(character) ? 'paired' : WORD.test(character) ? 'word' : '';
  }

  function add(words, word) {
    if (words.length < MOST_PARTS && word && bytes(word) <= 64 && words.indexOf(word) < 0) words.push(word);
  }

  // "Olh|Help|Call", "HTML|Page", but "PDFs".
  function segmentParts(segment) {
    return segment.replace(/([a-z])(?=[A-Z])/g, '$1\n').replace(/([A-Z])(?=[A-Z][a-z])(?![A-Z]s$)/g, '$1\n').split('\n');
  }

  // Calls for each word or symbol of a text: its parts, and the symbol as a whole if it is more than a word.
  function eachWord(text, call) {
    var all = Array.from(text), at = 0;
    var string = function (from, to) { return all.slice(from, to).join(''); };
    function joiner(i) {
      return all[i] === ':' && all[i + 1] === ':' ? 2 : all[i] === '.' || all[i] === '-' ? 1 : 0;
    }
    function endOfWord(i) { while (kind(all[i]) === 'word') i++; return i; }
    function dashes(body) {
      var from = body;
      while (from > 0 && body - from < 2 && all[from - 1] === '-') from--;
      var free = from === 0 || (all[from - 1] < '\x80' && kind(all[from - 1]) !== 'word' && all[from - 1] !== '-');
      return from < body && /[A-Za-z]/.test(all[body]) && free ? from : body;
    }
    function symbol(body) {
      var end = endOfWord(body);
      for (var more = joiner(end); more && kind(all[end + more]) === 'word'; more = joiner(end)) end = endOfWord(end + more);
      var signs = all[end] === '+' && all[end + 1] === '+' ? 2 : all[end] === '#' ? 1 : 0;
      var whole = kind(all[end + signs]) === 'word' ? end : end + signs, from = dashes(body), parts = [], wholes = [];
      add(wholes, folded(string(from, whole)));
      var segments = string(body, end).split(/[.:_-]/).filter(Boolean), alone = string(from, whole) === segments[0];
      segments.forEach(function (segment) {
        var pieces = segmentParts(segment);
        pieces.forEach(function (piece) { add(parts, folded(piece)); });
        if (pieces.length > 1 && !alone) add(wholes, folded(segment));
      });
      if (parts.length === 1 && wholes.length === 1 && wholes[0] === parts[0]) wholes = [];
      call(parts, wholes);
      return whole;
    }
    function pairs(from) {
      for (var first = from; ; first++) {
        var second = kind(all[first + 1]) === 'paired';
        if (!second && first !== from) return first + 1;
        var pair = folded(string(first, first + (second ? 2 : 1)));
        if (pair) call([pair], []);  // signs that only change others leave nothing
        if (!second) return first + 1;
      }
    }
    while (at < all.length) {
      var here = kind(all[at]);
      at = here === 'word' ? symbol(at) : here === 'paired' ? pairs(at) : at + 1;
    }
  }

  function wordsInOrder(text) {
    var words = [];
    eachWord(text, function (parts) { words.push.apply(words, parts); });
    return words;
  }

  // What a person asks for: words, symbols of which the words are the parts, and phrases in quotation marks.
  function queryIn(text, common) {
    var plain = text.replace(/[\u201c\u201d\u201e]/g, '"'), all = [], wholes = [], phrases = [];
    var take = function (words) { return function (word) { if (words.length < MOST_WORDS) add(words, word); }; };
    eachWord(plain, function (parts, symbols) {
      parts.forEach(take(all));
      symbols.forEach(take(wholes));
    });
    var words = all.filter(function (word) { return common.indexOf(word) < 0; });
    plain.split('"').forEach(function (part, i, parts) {
      var phrase = i % 2 && i < parts.length - 1 ? wordsInOrder(part) : [];
      if (phrase.length > 1) phrases.push(phrase);
    });
    return { words: words.length ? words : all, wholes: wholes, phrases: phrases };
  }

  // Letters that are missing, too many, other or exchanged with the next one.
  function distance(a, b) {
    var rows = [[], [], []], i, j;
    for (j = 0; j <= b.length; j++) rows[0][j] = j;
    for (i = 1; i <= a.length; i++) {
      var row = rows[i % 3], above = rows[(i + 2) % 3];
      row[0] = i;
      for (j = 1; j <= b.length; j++) {
        row[j] = Math.min(above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] === b[j - 1] ? 0 : 1));
        if (i > 1 && j > 1 && a[i - 1] === b[j - 2] && a[i - 2] === b[j - 1]) row[j] = Math.min(row[j], rows[(i + 1) % 3][j - 2] + 1);
      }
    }
    return rows[a.length % 3][b.length];
  }

  function same(a, b) {
    var at = 0;
    while (at < a.length && at < b.length && a[at] === b[at]) at++;
    return at;
  }

  // 0 completes the word, 1 is one letter off, 2 has another ending, 3 is two letters off.
  function howFar(word, other) {
    if (other.startsWith(word)) return 0;
    var longer = Math.max(word.length, other.length), shorter = Math.min(word.length, other.length);
    var letters = shorter + 2 >= longer && word.length >= 4 ? distance(word, other) : 9, alike = same(word, other);
    return letters === 1 ? 1 : alike >= 4 && alike + 3 >= longer ? 2 : letters === 2 && word.length >= 6 ? 3 : 9;
  }

  // The words near to one, best first; words come in the order of their frequency.
  function nearWords(word, words) {
    var found = [[], [], [], []];
    if (word.length < 2 || word.length > 40) return [];
    words.forEach(function (other) {
      if (other.length > 40) return;
      var far = howFar(word, other);
      if (far < 9 && found[far].length < NEAR) found[far].push(other);
    });
    return [].concat.apply([], found).slice(0, NEAR);
  }

  // ---- the index ----

  // Numbers as printable characters without quote and backslash: digits of base 45, the smallest first; all but the last
  // are 45 more.
  function postings(packed, call) {
    var at = 0, number = 0;
    function digit() { return characterAt(packed, at++); }
    function next() {
      var sum = 0, place = 1;
      for (var digits = 0; digits < 6; digits++, place *= 45) {
        var one = digit();
        sum += place * (one % 45);
        if (one < 45) break;
      }
      return sum;
    }
    while (at < packed.length) {
      number += next();
      if (!call(number, digit())) return;
    }
  }

  // A packed character at a place of a text.
  function characterAt(text, at) {
    var code = text.charCodeAt(at);
    code -= code > 92 ? 36 : 35;
    return code >= 0 && code < 90 ? code : 0;
  }

  function isAmong(word, words) { return (' ' + words + ' ').includes(' ' + word + ' '); }

  // The groups of a piece of words that have a word, each [words, weight, postings, titles]. Groups are separated by "~", the
  // parts of a group by "!". A word begins with the number of characters that it shares with the word before it.
  function groupsWith(word, packed) {
    var last = '', found = [];
    packed.split('~').forEach(function (row) {
      var end = row.indexOf('!'), words = row.slice(0, end).split(' ').map(function (coded) {
        return last = last.slice(0, characterAt(coded, 0)) + coded.slice(1);
      });
      if (words.indexOf(word) < 0) return;
      var parts = row.slice(end + 1).split('!'), digit = characterAt(parts[0], 0), isOne = digit < 45;
      found.push([words.join(' '), isOne ? digit : digit - 45 + 45 * characterAt(parts[0], 1), parts[0].slice(isOne ? 1 : 2), parts[1] || '']);
    });
    return found;
  }

  function sums(packed) {
    var all = [0], at = 0;
    while (at < packed.length) {
      var sum = 0, place = 1, code;
      do {
        code = packed.charCodeAt(at++);
        code -= code > 92 ? 36 : 35;
        sum += place * (code % 45);
        place *= 45;
      } while (code >= 45 && at < packed.length);
      all.push(all[all.length - 1] + sum);
    }
    return all;
  }

  // The last place of a sorted list whose value is not above this one.
  function placeOf(list, value) {
    var low = 0, high = list.length;
    while (low < high) {
      var middle = (low + high) >> 1;
      if (list[middle] <= value) low = middle + 1;
      else high = middle;
    }
    return Math.max(low - 1, 0);
  }

  var arrived = {};
  window.olhIndexPiece = function (name, value) { arrived[name] = value; };

  // The index below base (the way to the root, with "/"); nothing where there is none. `gone` is one of which a piece was not
  // there: a new one takes its place in the meantime, and its isGone says so.
  function open(base, gone) {
    var folder = base + 'htmldocs/QEL/search/', loading = new Map(), index;
    function piece(name) {
      if (loading.size > MOST_PIECES) loading.clear();
      if (!loading.has(name)) {
        loading.set(name, olh.script(folder + name + '.js' + (gone && name === 'head' ? '?not=' + gone.folder : '')).then(function (there) {
          if (!there && index) index.isGone = true;
          var value = arrived[name.slice(name.indexOf('/') + 1)];
          delete arrived[name.slice(name.indexOf('/') + 1)];
          return value;
        }));
      }
      return loading.get(name);
    }
    return piece('head').then(function (head) {
      if (!head || head.version !== 3 || sums(head.sections_of_pages).pop() > 1 << 22) return null;
      index = {
        base: base, folder: head.folder, isGone: false, manuals: [], meantWords: head.meant_words, firstWords: head.first_words, common: head.common.split(' '),
        firstSections: sums(head.sections_of_pages), firstOfTexts: sums(head.sections_of_texts),
        piece: function (name) { return piece(head.folder + '/' + name); }
      };
      var pages = 0;
      head.manuals.forEach(function (row) {
        index.manuals.push({ name: row[0], title: row[1], pdf: row[2] === 'pdf', first: pages, end: pages += row[3], unsearched: row[4] });
      });
      index.pageOf = new Uint32Array(index.firstSections[pages]);
      for (var page = 0; page < pages; page++) index.pageOf.fill(page, index.firstSections[page], index.firstSections[page + 1]);
      return index;
    });
  }

  // ---- the order of answers, in whole numbers ----

  function bits(number) {
    var count = 0;
    for (; number; number >>>= 1) count += number & 1;
    return count;
  }

  function Points(index, manuals, count) {
    var pages = index.firstSections.length - 1;
    this.index = index;
    this.count = count;
    this.weights = new Array(count).fill(0);
    this.searched = new Uint8Array(pages);
    index.manuals.forEach(function (manual) {
      if (!manuals || manuals.indexOf(manual.name) >= 0) this.searched.fill(1, manual.first, manual.end);
    }, this);
    this.title = new Uint32Array(pages);
    this.sections = new Uint32Array(pages);
    this.words = new Uint32Array(pages);
    this.inTitle = new Uint32Array(pages);
    this.ofTitle = new Uint32Array(pages);
    this.section = new Uint32Array(index.pageOf.length);
    this.ofSection = new Uint32Array(index.pageOf.length);
    this.ofManual = index.manuals.map(function () { return 0; });
  }

  // Whether a group of words is anywhere in the manuals that are searched.
  Points.prototype.givenBy = function (group) {
    var found = false, points = this;
    postings(group[3], function (page) { found = points.searched[page] === 1; return !found; });
    if (!found) postings(group[2], function (section) { found = points.searched[points.index.pageOf[section]] === 1; return !found; });
    return found;
  };

  Points.prototype.add = function (group, bit) {
    var points = this, last = 0, most = 0, weight = group[1], number = 31 - Math.clz32(bit);
    if (bit) this.weights[number] = Math.max(this.weights[number], weight);
    postings(group[3], function (page, share) {
      if (!points.searched[page]) return page < points.searched.length;
      points.title[page] += weight * share;
      points.words[page] |= bit;
      points.ofTitle[page] |= bit;
      if (share > SHARE_OF_LINKS) points.inTitle[page] |= bit;
      return true;
    });
    postings(group[2], function (section, share) {
      if (section >= points.section.length) return false;
      var page = points.index.pageOf[section], gives = weight * share;
      if (!points.searched[page]) return true;
      points.section[section] += gives;
      points.ofSection[section] |= bit;
      points.words[page] |= bit;
      if (page !== last) most = 0;
      last = page;
      if (gives > most) { points.sections[page] += gives - most; most = gives; }
      return true;
    });
  };

  // The title of a manual speaks for all its pages.
  Points.prototype.addTitles = function (word, bit) {
    this.index.manuals.forEach(function (manual, at) {
      manual.words = manual.words || wordsInOrder(manual.title);
      if (manual.words.indexOf(word) >= 0) this.ofManual[at] |= bit;
    }, this);
  };

  // How much words count together, of which each has a bit.
  Points.prototype.weightOf = function (words) {
    return this.weights.reduce(function (sum, weight, at) { return sum + (words >> at & 1) * weight; }, 0);
  };

  Points.prototype.ranked = function () {
    var points = this, whole = this.weightOf(~0), first = this.index.firstSections, found = [], weights = [];
    function weightOf(words) { return weights[words] === undefined ? weights[words] = points.weightOf(words) : weights[words]; }
    this.index.manuals.forEach(function (manual, number) {
      for (var page = manual.first; page < manual.end; page++) {
        if (!points.words[page] || first[page] === first[page + 1]) continue;
        var best = first[page], most = points.section[best] + (points.title[page] >>> 1);
        for (var at = best + 1; at < first[page + 1]; at++) if (points.section[at] > most) most = points.section[best = at];
        var words = points.words[page] | points.ofManual[number];
        if (2 * bits(words) < points.count) continue;
        var sum = 5 * points.section[best] + 5 * points.title[page] + 2 * points.sections[page];
        found.push({ page: page, section: best, words: words, count: bits(words), points: sum * weightOf(words) * (whole + weightOf(points.inTitle[page])), manual: manual });
      }
    });
    return found.sort(function (a, b) {
      return (points.count > FEW_WORDS ? 0 : b.count - a.count) || b.points - a.points || a.page - b.page;
    });
  };

  Points.prototype.sectionsWithAll = function (page) {
    var all = (1 << this.count) - 1, first = this.index.firstSections, found = [];
    for (var at = first[page]; at < first[page + 1]; at++) {
      if (this.ofSection[at] === all || (at === first[page] && (this.ofSection[at] | this.ofTitle[page]) === all)) found.push(at);
    }
    return found;
  };

  // Whether a word is a mark with a usual ending. A shorter mark takes less, since other words begin with it, too.
  function isForm(word, mark) {
    return word.startsWith(mark) && word.length - mark.length <= (mark.length > 3 ? 5 : 1);
  }

  // The letters that the words of a stem have in common with the one that was asked for; "int", which means the same as
  // "integers", is none of them.
  function markOf(word, groups) {
    var least = word.length;
    groups.forEach(function (group) {
      group[0].split(' ').forEach(function (other) {
        var here = same(word, other);
        if (here >= 3 && isForm(word, word.slice(0, here))) least = Math.min(least, here);
      });
    });
    return word.slice(0, least);
  }

  // A section's texts and its page.
  function textOf(index, page, section) {
    var number = placeOf(index.firstOfTexts, section);
    return index.piece('texts_' + number).then(function (piece) {
      var row = piece && piece.sections[section - index.firstOfTexts[number]];
      var of = piece && piece.pages.find(function (one) { return one[0] === page; });
      return row && of ? { anchor: row[0], heading: row[1], text: row[2], address: index.base + of[1], title: of[2] } : null;
    });
  }

  function holdsInOrder(words, phrase) {
    return words.some(function (word, at) {
      return phrase.every(function (one, i) { return words[at + i] === one; });
    });
  }

  // Leaves the pages that have the phrases, as far as that may be looked up.
  async function keepPhrases(index, query, points, answer) {
    var kept = [], pieces = new Set();
    for (var ranked of answer.pages) {
      for (var section of points.sectionsWithAll(ranked.page)) {
        var number = placeOf(index.firstOfTexts, section);
        if (!pieces.has(number) && pieces.size === PIECES_FOR_PHRASES) { answer.cut = true; continue; }
        pieces.add(number);
        var text = await textOf(index, ranked.page, section);
        if (!text) continue;
        var heading = wordsInOrder(text.heading), words = wordsInOrder(text.text);
        if (!query.phrases.every(function (phrase) { return holdsInOrder(words, phrase) || holdsInOrder(heading, phrase); })) continue;
        ranked.section = section;
        kept.push(ranked);
        break;
      }
    }
    answer.pages = kept;
    answer.complete = kept.length;
  }

  // The numbers of the pieces with a word: those with what it means and has in common with others, or one by its first letters.
  function piecesOf(index, word) {
    var meant = Array.from(index.meantWords.keys()).filter(function (at) { return isAmong(word, index.meantWords[at]); });
    return meant.length ? meant : [index.meantWords.length + placeOf(index.firstWords, word)];
  }

  // Looks for a query in manuals, given by name (null: in all). The answer: words, each { asked, taken, mark }, where taken is
  // another word when the one that was asked for is nowhere, or ""; pages, the best first; how many of them are complete.
  async function find(index, text, manuals) {
    var query = queryIn(text, index.common), points = new Points(index, manuals, query.words.length), answer = { words: [], cut: false };
    async function groupsOf(word) {
      var pieces = await Promise.all(piecesOf(index, word).map(function (number) { return index.piece('words_' + number); }));
      return pieces.flatMap(function (piece) { return groupsWith(word, piece || ''); }).filter(function (group) { return points.givenBy(group); });
    }
    async function lookFor(word) {
      var groups = await groupsOf(word), taken = word;
      if (!groups.length) {
        taken = '';
        var near = await index.piece('near');
        for (var other of nearWords(word, (near || '').split(' '))) {
          groups = await groupsOf(other);
          if (groups.length) { taken = other; break; }
        }
      }
      return { asked: word, taken: taken, groups: groups };
    }
    var wholes = query.wholes.map(groupsOf);
    var found = await Promise.all(query.words.map(lookFor));
    found.forEach(function (one, number) {
      one.groups.forEach(function (group) { points.add(group, 1 << number); });
      points.addTitles(one.taken || one.asked, 1 << number);
      answer.words.push({ asked: one.asked, taken: one.taken, mark: markOf(one.taken, one.groups) });
    });
    for (var groups of await Promise.all(wholes)) groups.forEach(function (group) { points.add(group, 0); });
    answer.pages = points.ranked();
    if (query.phrases.length) await keepPhrases(index, query, points, answer);
    else answer.complete = answer.pages.filter(function (one) { return one.count === query.words.length; }).length;
    return answer;
  }

  // The hits of an answer from first on, with their texts; one whose text is not there is left out.
  function hits(index, answer, first, count) {
    return Promise.all(answer.pages.slice(first, first + count).map(function (one) {
      return textOf(index, one.page, one.section).then(function (text) {
        return text && Object.assign(text, { manual: one.manual, words: one.words,
          href: text.address + (text.anchor ? '#' + text.anchor : '') });
      });
    })).then(function (all) { return all.filter(Boolean); });
  }

  // ---- what is shown of a hit ----

  // What words in a text begin with, or are, to be marked for an answer.
  function marksOf(answer, text) {
    var marks = answer.words.map(function (word) { return word.mark; }).filter(Boolean);
    return marks.concat(queryIn(text, []).wholes);
  }

  function isMarked(word, marks) {
    var plain = folded(word);
    return marks.some(function (mark) {
      if (PAIRED.test(mark)) return plain.includes(mark);
      return isForm(plain, mark);
    });
  }

  // A text in parts: every second one is to be marked.
  function markedParts(text, marks) {
    var parts = [''];
    text.split(/([\p{L}\p{M}\p{N}_]+(?:(?:[.-]|::)[\p{L}\p{M}\p{N}_]+)*)/u).forEach(function (piece, i) {
      if (i % 2 === 0 || !isMarked(piece, marks)) {
        var inner = i % 2 && piece.split(/([._:-]+)/);
        if (inner && inner.length > 1 && inner.some(function (one) { return isMarked(one, marks); })) {
          inner.forEach(function (one) { if (one && isMarked(one, marks)) parts.push(one, ''); else parts[parts.length - 1] += one; });
        } else parts[parts.length - 1] += piece;
      } else parts.push(piece, '');
    });
    return parts;
  }

  // About 200 characters of a text, where most of the marked words are: parts, every second one marked.
  function excerpt(text, marks) {
    var parts = markedParts(text, marks), places = [], at = 0, best = 0, most = 0;
    parts.forEach(function (part, i) {
      if (i % 2) places.push([at, folded(part)]);
      at += part.length;
    });
    places.forEach(function (place, i) {
      var seen = new Set();
      for (var j = i; j < places.length && places[j][0] < place[0] + 160; j++) seen.add(places[j][1]);
      if (seen.size > most) { most = seen.size; best = place[0]; }
    });
    var from = best < 60 ? 0 : text.indexOf(' ', best - 60) + 1, to = from + 200 < text.length ? text.lastIndexOf(' ', from + 200) : text.length;
    if (to <= from) to = Math.min(from + 200, text.length);
    var shown = markedParts(text.slice(from, to), marks);
    if (from) shown[0] = '\u2026 ' + shown[0];
    if (to < text.length) shown[shown.length - 1] += ' \u2026';
    return shown;
  }

  // The same as nodes.
  function nodes(parts) {
    return parts.map(function (part, i) { return i % 2 ? olh.element('mark', {}, part) : part; });
  }

  // Marks words in the text below an element, where a mark is allowed.
  function markIn(element, marks) {
    var walker = document.createTreeWalker(element, NodeFilter.SHOW_TEXT, function (node) {
      return node.parentElement.closest('script, style, textarea, select, svg, math') ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT;
    }), found = [];
    while (walker.nextNode() && found.length < 20000) found.push(walker.currentNode);
    found.forEach(function (node) {
      var parts = markedParts(node.data, marks);
      if (parts.length > 1) node.replaceWith.apply(node, nodes(parts));
    });
  }

  return { open: open, find: find, hits: hits, marksOf: marksOf, excerpt: excerpt, nodes: nodes, markIn: markIn };
})();
