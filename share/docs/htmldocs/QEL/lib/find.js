// A search of the index of this documentation root (htmldocs/QEL/search, which "olh dmerge" makes): which pages answer a
// query, and in which order. The terminal's "olh search" does the same and comes to the same order. Needs page.js.
//
// Pieces of the index are scripts, so that they load from the disk as from a web server: the head, the words of a query,
// and the texts of what is shown. Nothing else is loaded.
var olhFind = (function () {
  'use strict';
  var NEAR = 3, MOST_WORDS = 16, MOST_PARTS = 32, PIECES_FOR_PHRASES = 10, SHARE_OF_LINKS = 40, FEW_WORDS = 2, MOST_PIECES = 100, AT_ONCE = 3, SHORTEST_BEGINNING = 4;
  var MORE_THAN_POINTS = Math.pow(2, 50), MOST_WEIGHT = 1000, ASCII = /^[\0-\x7f]*$/;
  var PAIRED = /[\u0e00-\u0eff\u1000-\u109f\u1780-\u17ff\u3005-\u3007\u3040-\u30ff\u31f0-\u31ff\u3400-\u4dbf\u4e00-\u9fff\uac00-\ud7af\uf900-\ufaff\uff66-\uff9f\u{20000}-\u{3ffff}]/u;
  var PAIRED_RUN = new RegExp('(' + PAIRED.source + '+)', 'u');
  var WORD = /[\p{L}\p{M}\p{N}_]/u;

  // ---- words ----

  // Small letters without accents, and without what is not shown. As in the index the dotless i stays, and a Greek iota
  // below a letter comes behind it.
  function folded(text) {
    return ASCII.test(text) ? text.toLowerCase() : text.normalize('NFKD').replace(/\u0345/g, '\u03b9').replace(/[\p{M}\p{Default_Ignorable_Code_Point}]+/gu, '')
      .replace(/[^\u0131]+/g, function (part) { return part.toLowerCase().toUpperCase().toLowerCase(); }).replace(/\u03c2/g, '\u03c3');
  }

  function bytes(text) { return new TextEncoder().encode(text).length; }
  function isShort(word) { return word.length < 22 || bytes(word) <= 64; }

  function kind(character) {
    return character === undefined ? '' : PAIRED.test(character) ? 'paired' : WORD.test(character) ? 'word' : '';
  }

  function add(words, word) {
    if (words.length < MOST_PARTS && word && isShort(word) && words.indexOf(word) < 0) words.push(word);
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

  // A bit for each letter of a word in a text. One letter more, fewer or other changes two bits at most.
  function lettersIn(text, from, to) {
    for (var letters = 0; from < to; from++) letters |= 1 << (text.charCodeAt(from) & 31);
    return letters;
  }

  // The words near to one, best first; words is one text with a blank between two, in the order of their frequency. Most are
  // passed over by a look at their letters.
  function nearWords(word, words) {
    var found = [[], [], [], []], letters = lettersIn(word, 0, word.length), beginning = word.slice(0, 4);
    if (word.length < 2 || word.length > 40) return [];
    for (var at = 0, end; at < words.length; at = end + 1) {
      end = words.indexOf(' ', at);
      if (end < 0) end = words.length;
      var isLike = Math.abs(end - at - word.length) <= 2 && bits(lettersIn(words, at, end) ^ letters) <= 4;
      if (end - at > 40 || (!isLike && !words.startsWith(beginning, at))) continue;
      var other = words.slice(at, end), far = howFar(word, other);
      if (far < 9 && found[far].length < NEAR) found[far].push(other);
    }
    return [].concat.apply([], found).slice(0, NEAR);
  }

  // ---- the index ----

  // Numbers are printable characters without quote and backslash: digits of base 45, the smallest first; all but the last are
  // 45 more.
  var CHARACTERS = new Uint8Array(128).map(function (_, code) {
    var number = code - (code > 92 ? 36 : 35);
    return number >= 0 && number < 90 ? number : 0;
  });
  function characterAt(text, at) { return CHARACTERS[text.charCodeAt(at)] | 0; }

  // Reads such numbers from a place of a text on.
  function Numbers(packed, at) {
    this.packed = packed;
    this.at = at;
  }
  Numbers.prototype.next = function () {
    for (var sum = 0, place = 1, digits = 0; digits < 6 && this.at < this.packed.length; digits++, place *= 45) {
      var one = characterAt(this.packed, this.at++);
      sum += place * (one % 45);
      if (one < 45) break;
    }
    return sum;
  };

  // Numbers packed as what each is more than the one before it, the first more than 0; behind each comes its share, where
  // they have one. Most are of one digit.
  function rising(packed, all, count, hasShares) {
    for (var at = 0, number = 0, length = packed.length, characters = CHARACTERS; at < length;) {
      var more = characters[packed.charCodeAt(at)] | 0;
      if (more < 45) at++;
      else {
        var numbers = new Numbers(packed, at);
        more = numbers.next();
        at = numbers.at;
      }
      all[count++] = number += more;
      if (hasShares) all[count++] = characters[packed.charCodeAt(at++)] | 0;
    }
    return all.subarray(0, count);
  }

  // Each posting is a number and a share.
  function postings(packed) { return rising(packed, new Uint32Array(packed.length + 1), 0, true); }

  // Where each of parts begins that are so long, and where the last one ends.
  function sums(packed) { return rising(packed, new Uint32Array(packed.length + 1), 1, false); }

  function isAmong(word, words) { return (' ' + words + ' ').includes(' ' + word + ' '); }

  // The groups of a piece of words that have a word, or one that begins so, each { words, weight, sections, titles }. Groups are
  // separated by "~", the parts of a group by "!". A word begins with the number of characters that it shares with the word
  // before it.
  function groupsWith(word, packed, isBeginning) {
    var last = '', found = [], isWanted = function (one) { return isBeginning ? one.startsWith(word) : one === word; };
    for (var at = 0, end; at < packed.length; at = end + 1) {
      end = packed.indexOf('~', at);
      if (end < 0) end = packed.length;
      var group = packed.slice(at, end), head = group.indexOf('!'), words = (head < 0 ? group : group.slice(0, head)).split(' ').map(function (one) {
        return last = last.slice(0, characterAt(one, 0)) + one.slice(1);
      });
      if (!words.some(isWanted)) continue;
      var numbers = new Numbers(group, head < 0 ? group.length : head + 1), weight = Math.min(numbers.next(), MOST_WEIGHT), parts = group.slice(numbers.at).split('!');
      found.push({ words: words, weight: weight, sections: postings(parts[0]), titles: postings(parts[1] || '') });
    }
    return found;
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
      var firstSections = head && head.version === 3 ? sums(head.sections_of_pages) : [Infinity], pages = firstSections.length - 1, sections = firstSections[pages];
      if (sections > 1 << 22) return null;
      index = {
        base: base, folder: head.folder, isGone: false, manuals: [], meantWords: head.meant_words, firstWords: head.first_words, common: head.common.split(' '),
        firstSections: firstSections, pageOf: new Uint32Array(sections), firstOfTexts: sums(head.sections_of_texts),
        piece: function (name) { return piece(head.folder + '/' + name); }
      };
      for (var page = 0; page < pages; page++) index.pageOf.fill(page, firstSections[page], firstSections[page + 1]);
      var first = 0;
      head.manuals.forEach(function (row) {
        index.manuals.push({ name: row[0], title: row[1], folded: folded(row[1]), pdf: row[2] === 'pdf', first: first, end: first += row[3], unsearched: row[4] });
      });
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
    this.words = new Uint16Array(pages);
    this.inTitle = new Uint16Array(pages);
    this.ofTitle = new Uint16Array(pages);
    this.section = new Uint32Array(index.pageOf.length);
    this.ofSection = new Uint16Array(index.pageOf.length);
    this.ofManual = index.manuals.map(function () { return 0; });
  }

  // Whether a group of words is anywhere in the manuals that are searched.
  Points.prototype.givenBy = function (group) {
    var searched = this.searched, pageOf = this.index.pageOf, at;
    for (at = 0; at < group.titles.length; at += 2) if (searched[group.titles[at]]) return true;
    for (at = 0; at < group.sections.length; at += 2) if (searched[pageOf[group.sections[at]]]) return true;
    return false;
  };

  Points.prototype.add = function (group, bit) {
    var weight = group.weight, number = 31 - Math.clz32(bit);
    if (bit) this.weights[number] = Math.max(this.weights[number], weight);
    this.addTitles(group.titles, weight, bit);
    this.addSections(group.sections, weight, bit);
  };

  // What follows runs tens of thousands of times at the first search, before the browser has compiled it: what it needs is in
  // variables of its own.
  Points.prototype.addTitles = function (titles, weight, bit) {
    var searched = this.searched, title = this.title, words = this.words, ofTitle = this.ofTitle, inTitle = this.inTitle;
    for (var at = 0, end = titles.length; at < end; at += 2) {
      var page = titles[at], share = titles[at + 1];
      if (!searched[page]) continue;
      title[page] += weight * share;
      words[page] |= bit;
      ofTitle[page] |= bit;
      if (share > SHARE_OF_LINKS) inTitle[page] |= bit;
    }
  };

  Points.prototype.addSections = function (sections, weight, bit) {
    var searched = this.searched, pageOf = this.index.pageOf, points = this.section, ofSection = this.ofSection, words = this.words;
    var ofPage = this.sections, last = 0, most = 0;
    for (var at = 0, end = sections.length; at < end; at += 2) {
      var section = sections[at], page = pageOf[section];
      if (!searched[page]) continue;
      var gives = weight * sections[at + 1];
      points[section] += gives;
      ofSection[section] |= bit;
      words[page] |= bit;
      if (page !== last) { most = 0; last = page; }
      if (gives > most) { ofPage[page] += gives - most; most = gives; }
    }
  };

  // The title of a manual speaks for all its pages.
  Points.prototype.addManuals = function (word, bit) {
    this.index.manuals.forEach(function (manual, at) {
      if (!manual.folded.includes(word)) return;
      manual.words = manual.words || wordsInOrder(manual.title);
      if (manual.words.indexOf(word) >= 0) this.ofManual[at] |= bit;
    }, this);
  };

  // How much words count together, of which each has a bit.
  Points.prototype.weightOf = function (words) {
    return this.weights.reduce(function (sum, weight, at) { return sum + (words >> at & 1) * weight; }, 0);
  };

  // The section that answers best on a page: what a title says is at the page's beginning.
  Points.prototype.bestSection = function (page) {
    var first = this.index.firstSections, best = first[page], most = this.section[best] + (this.title[page] >>> 1);
    for (var at = best + 1; at < first[page + 1]; at++) if (this.section[at] > most) most = this.section[best = at];
    return best;
  };

  // What answers: total pages, of which complete have all words, and best, which gives the first ones in their order.
  Points.prototype.ranked = function () {
    var points = this, first = this.index.firstSections, count = this.count, of = [], total = 0, complete = 0, whole = this.weightOf(~0);
    var pages = new Uint32Array(this.words.length), ranks = new Float64Array(this.words.length);
    var wordsOf = this.words, inTitle = this.inTitle, title = this.title, sections = this.sections, section = this.section;
    // Of words: how much they count, how much in a title, what comes on top where pages with more words come first, and whether
    // they are enough, or all.
    function known(words) {
      var many = bits(words), weight = points.weightOf(words);
      return of[words] = { isEnough: 2 * many >= count, isAll: many === count, weight: weight, inTitle: whole + weight,
        more: count > FEW_WORDS ? 0 : many * MORE_THAN_POINTS };
    }
    this.index.manuals.forEach(function (manual, number) {
      for (var page = manual.first, end = manual.end, ofManual = points.ofManual[number]; page < end; page++) {
        var here = wordsOf[page];
        if (!here) continue;
        var words = of[here | ofManual] || known(here | ofManual), at = first[page], behind = first[page + 1];
        if (!words.isEnough || at === behind) continue;
        // As in bestSection.
        var best = section[at], most = best + (title[page] >>> 1);
        while (++at < behind) if (section[at] > most) most = best = section[at];
        var sum = 5 * best + 5 * title[page] + 2 * sections[page];
        ranks[total] = sum * words.weight * (of[inTitle[page]] || known(inTitle[page])).inTitle + words.more;
        pages[total++] = page;
        if (words.isAll) complete++;
      }
    });
    ranks = ranks.subarray(0, total);
    return { total: total, complete: complete, best: function (count) {
      // Of ten thousands only those that may be among the best are put in order.
      var best = [], least = -1, most = 2 * count + 50;
      function keepBest() {
        best.sort(function (a, b) { return ranks[b] - ranks[a] || a - b; });
        if (best.length < count) return;
        best.length = count;
        least = ranks[best[count - 1]];
      }
      for (var at = 0; at < total; at++) {
        if (ranks[at] > least && best.push(at) === most) keepBest();
      }
      keepBest();
      return best.map(function (at) { return points.rankedPage(pages[at]); });
    } };
  };

  Points.prototype.rankedPage = function (page) {
    var number = this.index.manuals.findIndex(function (manual) { return page < manual.end; });
    return { page: page, section: this.bestSection(page), words: this.words[page] | this.ofManual[number], manual: this.index.manuals[number] };
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
      group.words.forEach(function (other) {
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
    for (var ranked of answer.best(answer.total)) {
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
    return { total: kept.length, complete: kept.length, best: function (count) { return kept.slice(0, count); } };
  }

  // The numbers of the pieces with a word: those with what it means and has in common with others, or one by its first letters.
  function piecesOf(index, word) {
    var meant = Array.from(index.meantWords.keys()).filter(function (at) { return isAmong(word, index.meantWords[at]); });
    return meant.length ? meant : [index.meantWords.length + placeOf(index.firstWords, word)];
  }

  // The same of words that begin so: one, or two where a piece ends before them.
  function piecesOfBeginning(index, word) {
    var at = placeOf(index.firstWords, word), first = index.meantWords.length + at;
    return at + 1 < index.firstWords.length && index.firstWords[at + 1].startsWith(word) ? [first, first + 1] : [first];
  }

  // Looks for a query in manuals, given by name (null: in all). The answer: words, each { asked, taken, mark }, where taken is
  // another word when the one that was asked for is not there, or ""; total pages, of which complete have all words; best, which
  // gives the first ones of them; hasPhrases, and cut where not all pages could be looked through for these.
  async function find(index, text, manuals) {
    var query = queryIn(text, index.common), points = new Points(index, manuals, query.words.length), answer = { words: [], cut: false, hasPhrases: query.phrases.length > 0 };
    async function groupsOf(word, isBeginning) {
      var pieces = await Promise.all((isBeginning ? piecesOfBeginning : piecesOf)(index, word).map(function (number) { return index.piece('words_' + number); }));
      return pieces.flatMap(function (piece) { return groupsWith(word, piece || '', isBeginning); }).filter(function (group) { return points.givenBy(group); });
    }
    // A symbol that is not there is the beginning of others, as a person types it.
    async function lookForWhole(whole) {
      var groups = await groupsOf(whole);
      if (groups.length || bytes(whole) < SHORTEST_BEGINNING) return { groups: groups };
      groups = (await groupsOf(whole, true)).slice(0, NEAR);
      return { groups: groups, beginning: whole, taken: groups.length ? groups[0].words.find(function (word) { return word.startsWith(whole); }) : '' };
    }
    async function lookFor(word) {
      var groups = await groupsOf(word), taken = word;
      var begun = (await Promise.all(wholes)).find(function (whole) { return whole.taken && whole.beginning.endsWith(word); });
      if (begun) return { asked: word, taken: groups.length ? word : begun.taken, groups: groups.concat(begun.groups) };
      if (!groups.length) {
        taken = '';
        var near = await index.piece('near');
        for (var other of nearWords(word, near || '')) {
          groups = await groupsOf(other);
          if (groups.length) { taken = other; break; }
        }
      }
      return { asked: word, taken: taken, groups: groups };
    }
    var wholes = query.wholes.map(lookForWhole);
    var found = await Promise.all(query.words.map(lookFor));
    found.forEach(function (one, number) {
      one.groups.forEach(function (group) { points.add(group, 1 << number); });
      points.addManuals(one.taken || one.asked, 1 << number);
      answer.words.push({ asked: one.asked, taken: one.taken, mark: markOf(one.taken, one.groups) });
    });
    for (var whole of await Promise.all(wholes)) whole.groups.forEach(function (group) { points.add(group, 0); });
    Object.assign(answer, points.ranked());
    return query.phrases.length ? Object.assign(answer, await keepPhrases(index, query, points, answer)) : answer;
  }

  // Calls show with the hits of an answer from first on, in their order, each with its text; one whose text is not there is left out.
  // The first ones do not wait for the others, which are not loaded at all once show has said false: nobody wants them any more.
  async function hits(index, answer, first, count, show) {
    var best = answer.best(first + count).slice(first);
    for (var at = 0, goesOn = true; at < best.length && goesOn; at += AT_ONCE) {
      var part = best.slice(at, at + AT_ONCE), texts = await Promise.all(part.map(function (one) { return textOf(index, one.page, one.section); }));
      texts.forEach(function (text, i) {
        if (text) goesOn = show(Object.assign(text, { manual: part[i].manual, words: part[i].words, href: text.address + (text.anchor ? '#' + text.anchor : '') })) !== false;
      });
    }
  }

  // ---- what is shown of a hit ----

  // What words in a text begin with, or are, to be marked for an answer.
  function marksOf(answer, text) {
    var marks = answer.words.map(function (word) { return word.mark; }).filter(Boolean);
    return marks.concat(queryIn(text, []).wholes);
  }

  // A text in parts: every second one is to be marked.
  function markedParts(text, marks) {
    var parts = [''], isPaired = PAIRED.test(text);
    function addPlain(piece) { parts[parts.length - 1] += piece; }

    // Words with no blanks between them: the pairs of which some are marks.
    function addPairs(run) {
      var all = Array.from(run), isMarked = all.map(function () { return false; });
      all.forEach(function (_, at) {
        for (var to = at + 1; to <= at + 2; to++) if (marks.indexOf(folded(all.slice(at, to).join(''))) >= 0) isMarked.fill(true, at, to);
      });
      all.forEach(function (one, at) {
        if (!isMarked[at]) addPlain(one);
        else if (isMarked[at - 1]) parts[parts.length - 2] += one;
        else parts.push(one, '');
      });
    }

    // A word or symbol as a whole, or the words of it.
    function addSymbol(symbol, sign) {
      var plain = folded(symbol);
      if (symbol && marks.some(function (mark) { return isForm(plain, mark); })) parts.push(symbol, '');
      else if (sign && sign.test(symbol)) symbol.split(sign).forEach(function (part) { addSymbol(part); });
      else addPlain(symbol);
    }

    text.split(/([\p{L}\p{M}\p{N}_]+(?:(?:[.-]|::)[\p{L}\p{M}\p{N}_]+)*)/u).forEach(function (piece, i) {
      if (i % 2 === 0) addPlain(piece);
      else if (!isPaired) addSymbol(piece, /([._:-]+)/);
      else piece.split(PAIRED_RUN).forEach(function (part, at) { if (at % 2) addPairs(part); else addSymbol(part, /([._:-]+)/); });
    });
    return parts;
  }

  // Where a text is cut, at a place or up to 40 characters before it: behind a blank if there is one, not within a character.
  function cutAt(text, at) {
    var blank = text.lastIndexOf(' ', at - 1) + 1;
    if (at >= text.length) return text.length;
    return blank > at - 40 ? blank : /[\udc00-\udfff]/.test(text[at]) ? at - 1 : at;
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
    var from = best < 60 ? 0 : cutAt(text, best - 30), to = cutAt(text, from + 200), shown = markedParts(text.slice(from, to), marks);
    if (from) shown[0] = '\u2026 ' + shown[0];
    if (to < text.length) shown.push(shown.pop().trimEnd() + ' \u2026');
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
