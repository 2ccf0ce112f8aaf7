import './styles/app.css';
import './components/app.js';
